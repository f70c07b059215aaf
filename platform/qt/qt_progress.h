// The progress window frmProgress.
#pragma once

#include <QElapsedTimer>
#include <functional>
#include <memory>

#include "platform/progress.h"

class QLabel;
class QProgressBar;
class QWidget;

namespace kalvo {

class QtProgress : public Progress {
public:
    // `draw` lets the toolkit draw, without delivering anything of the program.
    explicit QtProgress(std::function<void()> draw);
    QtProgress(const QtProgress&) = delete;
    QtProgress& operator=(const QtProgress&) = delete;
    ~QtProgress() override;

    void setLabel(std::string_view text) override;
    void setValue(double percent) override;
    void show() override;
    void refresh() override;
    void unload() override;

private:
    void repaint();

    std::function<void()> draw_;
    std::unique_ptr<QWidget> window_;
    QLabel* Label1 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QElapsedTimer sinceRepaint_;
};

}  // namespace kalvo
