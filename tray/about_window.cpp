#include "tray/about_window.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <array>

namespace kalvo {

namespace {

constexpr int kIconSize = 64;

const char* const kLicences =
    "<p>Bibliothèques utilisées et leurs licences :</p><ul>"
    "<li>Qt 6 : GNU LGPL version 3</li>"
    "<li>SQLite : domaine public</li>"
    "<li>Asio : Boost Software License 1.0</li>"
    "<li>spdlog, fmt : MIT</li>"
    "<li>libzip, CLI11 : BSD ; zlib : zlib</li>"
    "<li>libxkbcommon, XCB, libX11, Wayland : MIT</li></ul>";

struct Tool {
    const char* program;
    QStringList arguments;
};

// The information tools of the usual desktops, the first that is installed counts.
const std::array<Tool, 5>& informationTools() {
    static const std::array<Tool, 5> tools = {{{"msinfo32", {}},
                                               {"kinfocenter", {}},
                                               {"gnome-control-center", {"info-overview"}},
                                               {"hardinfo2", {}},
                                               {"hardinfo", {}}}};
    return tools;
}

bool startInformationTool() {
    for (const Tool& tool : informationTools()) {
        const QString path = QStandardPaths::findExecutable(tool.program);
        if (!path.isEmpty() && QProcess::startDetached(path, tool.arguments)) return true;
    }
    return false;
}

QString knownInformation() {
    const QSize size = QGuiApplication::primaryScreen()->size();
    return QString("Système : %1\nNoyau : %2 %3\nProcesseur : %4\nMachine : %5\nÉcran : %6 x %7")
        .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
             QSysInfo::currentCpuArchitecture(), QSysInfo::machineHostName(),
             QString::number(size.width()), QString::number(size.height()));
}

}  // namespace

AboutWindow::AboutWindow(const QString& version, const QString& keyboard) {
    setObjectName("frmAbout");
    setWindowTitle("À propos de KALVO Horizon");
    setWindowFlag(Qt::WindowStaysOnTopHint);
    auto* const layout = new QVBoxLayout(this);

    auto* const header = new QHBoxLayout;
    auto* const picture = new QLabel;
    picture->setPixmap(windowIcon().pixmap(kIconSize));
    auto* const title = new QLabel("<h2>KALVO Horizon</h2>Version " + version);
    title->setObjectName("lblTitle");
    header->addWidget(picture);
    header->addWidget(title, 1);
    layout->addLayout(header);

    if (!keyboard.isEmpty()) {
        auto* const typing = new QLabel("Saisie par : " + keyboard);
        typing->setObjectName("lblKeyboard");
        typing->setWordWrap(true);
        layout->addWidget(typing);
    }

    auto* const licences = new QTextBrowser;
    licences->setObjectName("txtLicences");
    licences->setHtml(kLicences);
    licences->setMinimumSize(420, 190);
    layout->addWidget(licences);

    auto* const buttons = new QDialogButtonBox;
    auto* const information = buttons->addButton("&Infos système...", QDialogButtonBox::ActionRole);
    information->setObjectName("cmdSysInfo");
    auto* const close = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    close->setObjectName("cmdOK");
    connect(information, &QPushButton::clicked, this, [this] { showSystemInformation(); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(buttons);
    close->setDefault(true);
    close->setFocus();
}

void AboutWindow::showSystemInformation() {
    if (!startInformationTool())
        QMessageBox::information(this, "Informations système", knownInformation());
}

}  // namespace kalvo
