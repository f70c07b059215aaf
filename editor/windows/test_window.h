// The test window FrmTest: the preview of a scenario and its test on simulated frames.
#pragma once

#include <QTimer>
#include <QWidget>

#include "editor/settings_context.h"

class QLabel;
class QListWidget;
class QPlainTextEdit;

namespace kalvo {

class TestWindow : public QWidget {
public:
    // `closeSteps` closes all windows of the steps and brings `owner` back.
    TestWindow(QWidget* owner, const SettingsContext& context, std::function<void()> closeSteps);

    // Shows the preview of the scenario as it is now.
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeControls();
    void showPreview();
    void takeLastFrame();
    void runTest();
    [[nodiscard]] std::string sampleFrame() const;

    const SettingsContext& context_;
    std::function<void()> closeSteps_;
    QTimer previewTimer_;
    QPlainTextEdit* TxtTrame;
    QLabel* LblScript;
    QLabel* LblRemarques;
    QPlainTextEdit* TxtScript;
    QListWidget* LstFrappe;
};

}  // namespace kalvo
