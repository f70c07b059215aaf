// The about box frmAbout.
#pragma once

#include <QDialog>

namespace kalvo {

class AboutWindow : public QDialog {
public:
    // `keyboard` says what types; empty where there is no choice.
    explicit AboutWindow(const QString& version, const QString& keyboard = {});

private:
    // Starts the system's information tool; without one, shows what the toolkit knows.
    void showSystemInformation();
};

}  // namespace kalvo
