// The way out of a transfer whose scanner does not answer.
#pragma once

#include <QDialog>
#include <functional>

namespace kalvo {

// Stands while a transfer waits for its scanner; Escape or its button ends it.
class TransferWindow : public QDialog {
public:
    explicit TransferWindow(const std::function<void()>& onStop);
};

}  // namespace kalvo
