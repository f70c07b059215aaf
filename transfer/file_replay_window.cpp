#include "transfer/file_replay_window.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"

namespace kalvo {

namespace {

constexpr int kPathWidth = 380;
constexpr int kSeparatorWidth = 60;

constexpr std::array<std::pair<const char*, const char*>, 4> kUsualSeparators = {
    {{";", ";"}, {",", ","}, {"Tab", "\t"}, {"|", "|"}}};

}  // namespace

FileReplayWindow::FileReplayWindow(ReplayForm form,
                                   std::function<void(const std::function<void()>&)> deliver,
                                   std::function<void()> makeWay)
    : form_(std::move(form)), deliver_(std::move(deliver)), makeWay_(std::move(makeWay)) {
    setObjectName("frmFichiers");
    setWindowTitle(" Emulation depuis un fichier texte");
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);

    auto* const connectBar =
        makeToolBar("TlbConnect", {{"Démarrer",
                                    "demarrer",
                                    "Rejoue le fichier à travers le scénario actif (Entrée).",
                                    {Qt::Key_Return, Qt::Key_Enter},
                                    [this] { start(); }},
                                   {"Fermer",
                                    "fermer",
                                    "Ferme la fenêtre sans rien rejouer (Échap).",
                                    {Qt::Key_Escape},
                                    [this] { close(); }}});
    auto* const openBar = makeToolBar("tlbOuvrir", {{"Ouvrir...",
                                                     "ouvrir",
                                                     "Choisit le fichier à rejouer (Ctrl+O).",
                                                     {QKeySequence::Open},
                                                     [this] { chooseFile(); }}});

    txtFic = new QLineEdit;
    txtFic->setObjectName("txtFic");
    txtFic->setMinimumWidth(kPathWidth);
    txtFic->setToolTip("Le fichier texte dont chaque ligne est un enregistrement.");
    txtSep = new QLineEdit;
    txtSep->setObjectName("txtSep");
    txtSep->setMaximumWidth(kSeparatorWidth);
    txtSep->setToolTip("Le caractère qui sépare les champs d'une ligne, par exemple ;");

    auto* const options = new QGroupBox("Options : ");
    auto* const grid = new QGridLayout(options);
    grid->addWidget(new QLabel("Fichier à remonter :"), 0, 0);
    grid->addWidget(txtFic, 0, 1);
    grid->addWidget(openBar, 0, 2);
    grid->addWidget(new QLabel("Séparateur de champs :"), 1, 0);
    auto* const separators = new QHBoxLayout;
    separators->addWidget(txtSep);
    for (const auto& [name, text] : kUsualSeparators) {
        auto* const button = new QPushButton(name);
        button->setToolTip(QString("Les champs sont séparés par : ") + name);
        pressWithEnter(button);
        connect(button, &QPushButton::clicked, this,
                [this, text = QString(text)] { txtSep->setText(text); });
        separators->addWidget(button);
    }
    separators->addStretch();
    grid->addLayout(separators, 1, 1);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(connectBar);
    layout->addWidget(options);
    setTabOrder(txtFic, txtSep);
    txtFic->setFocus();
}

void FileReplayWindow::chooseFile() {
    deliver_([this] {
        const std::string file = form_.getFile();
        if (!file.empty()) txtFic->setText(toQString(file));
    });
}

void FileReplayWindow::start() {
    const std::string file = fromQString(txtFic->text());
    const std::string separator = fromQString(txtSep->text());
    deliver_([&, form = form_, makeWay = makeWay_]() mutable {
        if (!form.complete(file, separator)) return;
        // Closing destroys the window, not before the next turn of the event loop.
        close();
        makeWay();
        form.start(file, separator);
    });
}

}  // namespace kalvo
