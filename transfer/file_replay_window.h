// The replay window frmFichiers.
#pragma once

#include <QWidget>
#include <functional>

#include "transfer/file_replay.h"

class QLineEdit;

namespace kalvo {

class FileReplayWindow : public QWidget {
public:
    // `deliver` runs what a button does as an event of the program; `makeWay` gives the
    // focus back to the target once the window is closed.
    FileReplayWindow(ReplayForm form, std::function<void(const std::function<void()>&)> deliver,
                     std::function<void()> makeWay);

private:
    void chooseFile();
    void start();

    ReplayForm form_;
    std::function<void(const std::function<void()>&)> deliver_;
    std::function<void()> makeWay_;
    QLineEdit* txtFic = nullptr;
    QLineEdit* txtSep = nullptr;
};

}  // namespace kalvo
