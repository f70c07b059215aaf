// The assistant of a new site: three pages and the way through them.
#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>

#include "editor/first_site.h"
#include "editor/settings_context.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;

namespace kalvo {

class RowListView;

class FirstSiteWindow : public QDialog {
public:
    // `deliver` and `portDevices` of the services are used. `finished` is called once
    // everything is stored, with whether the port is open; the window is closed then.
    // Deletes itself when it closes. RuntimeErrors of the database.
    FirstSiteWindow(QWidget* owner, const Platform& platform, RunTimeState& state,
                    SettingsServices services, std::function<void(bool portOpen)> finished);

private:
    [[nodiscard]] QWidget* terminalPage();
    [[nodiscard]] QWidget* scenarioPage();
    [[nodiscard]] QWidget* pathRow();
    [[nodiscard]] QWidget* testPage();
    [[nodiscard]] QWidget* foot();
    void showPage(int page);
    void forward();
    void finish();
    void runTest();
    void refresh();
    void showPreview();
    void act(const std::function<void()>& handler);

    Platform platform_;
    SettingsServices services_;
    std::function<void(bool)> finished_;
    FirstSite site_;
    QTimer plugging_;
    QLabel* LblEtape;
    QStackedWidget* pages_;
    QComboBox *CboTypeTerminal, *CboPortTerminal, *CboVitesseTerminal;
    QPlainTextEdit* TxtExemple;
    QComboBox* CboModele;
    QLabel* LblRemarque;
    QLineEdit *TxtNom, *TxtFichier;
    QLabel* LblFichier;
    QWidget* pathRow_;
    QLabel* LblApercu;
    RowListView* LstApercu;
    QPushButton* CmdEssayer;
    QCheckBox* ChkConseilles;
    QPushButton *CmdPrecedent, *CmdSuivant, *CmdTerminer;
};

}  // namespace kalvo
