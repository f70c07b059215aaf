// The about box frmAbout.
#pragma once

#include <QDialog>

namespace kalvo {

class AboutWindow : public QDialog {
public:
    explicit AboutWindow(const QString& version);

private:
    // Starts the system's information tool; without one, shows what the toolkit knows.
    void showSystemInformation();
};

}  // namespace kalvo
