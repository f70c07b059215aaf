// The test FrmTest: the preview of a scenario and its test on simulated frames.
#pragma once

#include <QTimer>
#include <QWidget>

#include "editor/settings_context.h"

class QLabel;
class QPlainTextEdit;

namespace kalvo {

class RowListView;

class TestPane : public QWidget {
public:
    // `closeSteps` closes the window of the steps.
    TestPane(const SettingsContext& context, std::function<void()> closeSteps);

    // Shows the preview of the scenario as it is now.
    void refresh();

private:
    [[nodiscard]] QWidget* controls();
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
    RowListView* LstFrappe;
};

}  // namespace kalvo
