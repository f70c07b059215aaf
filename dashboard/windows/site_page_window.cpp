#include "dashboard/windows/site_page_window.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstddef>
#include <utility>

#include "dashboard/site_archive.h"
#include "journal/batch_journal.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr std::string_view kFilter = "Archives zip (*.zip)|*.zip|Tous (*.*)|*.*";

}  // namespace

SitePage::SitePage(DashboardContext context) : context_(std::move(context)) {
    auto* const explanation = new QLabel(
        "La base des scénarios est copiée chaque jour, au premier démarrage du programme ; les dix "
        "derniers jours sont gardés dans le dossier « Copies » du site.");
    explanation->setWordWrap(true);
    LstCopies = new QListView;
    LstCopies->setObjectName("LstCopies");
    LstCopies->setEditTriggers(QAbstractItemView::NoEditTriggers);
    LstCopies->setModel(&titles_);
    LstCopies->setToolTip("Les copies de Scen.mdb, la plus récente en haut.");
    auto* const label = new QLabel("Co&pies de la base des scénarios :");
    label->setBuddy(LstCopies);
    auto* const buttons = new QHBoxLayout;
    CmdRevenir = addButton(buttons, "CmdRevenir", "Re&venir à cette copie...",
                           "Remet en place les scénarios de la copie choisie.", &SitePage::goBack);
    addButton(buttons, "CmdCopierBase", "Copier &maintenant",
              "Refait la copie d'aujourd'hui, par exemple avant un essai.", &SitePage::copyNow);
    buttons->addStretch();
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(label);
    layout->addWidget(LstCopies, 1);
    layout->addLayout(buttons);
    layout->addWidget(makeExchange());
    refresh();
}

QWidget* SitePage::makeExchange() {
    auto* const group = new QGroupBox("Tout le site dans un fichier");
    auto* const text = new QLabel(
        "Une archive zip porte le site sur un autre poste, ou en garde l'état : le port, les "
        "options, les touches et les scénarios. Une importation montre d'abord ce qu'elle change.");
    text->setWordWrap(true);
    auto* const buttons = new QHBoxLayout;
    addButton(buttons, "CmdExporter", "E&xporter le site...",
              "Écrit les fichiers du site dans une archive.", &SitePage::exportSite);
    addButton(buttons, "CmdImporter", "Importer &un site...",
              "Remplace les fichiers du site par ceux d'une archive, après une question.",
              &SitePage::importSite);
    buttons->addStretch();
    auto* const layout = new QVBoxLayout(group);
    layout->addWidget(text);
    layout->addLayout(buttons);
    return group;
}

QPushButton* SitePage::addButton(QLayout* row, const char* name, const char* caption,
                                 const char* tip, void (SitePage::*action)()) {
    auto* const button = makeButton(name, caption, tip);
    connect(button, &QPushButton::clicked, this, [this, action] {
        context_.services.deliver([this, action] { (this->*action)(); });
        refresh();
    });
    row->addWidget(button);
    return button;
}

void SitePage::refresh() {
    const int row = std::max(LstCopies->currentIndex().row(), 0);
    copies_.clear();
    // A folder that cannot be listed is one without copies.
    resumeNext([this] {
        copies_ = siteCopies(context_.platform.files, context_.state.scenario.applicationFolder);
    });
    QStringList titles;
    for (const SiteCopy& copy : copies_) titles << toQString(copy.title);
    titles_.setStringList(titles);
    LstCopies->setCurrentIndex(
        titles_.index(std::min(row, static_cast<int>(titles.size()) - 1), 0));
    CmdRevenir->setEnabled(!titles.isEmpty());
}

// NOLINTNEXTLINE(readability-make-member-function-const): of one type with the other actions
void SitePage::copyNow() {
    makeDailyCopy(context_.platform, context_.state.scenario.applicationFolder);
}

void SitePage::goBack() {
    const int row = LstCopies->currentIndex().row();
    if (row < 0 || row >= static_cast<int>(copies_.size())) return;
    const SiteCopy copy = copies_[static_cast<std::size_t>(row)];
    Dialogs& dialogs = context_.platform.dialogs;
    if (!dialogs.confirm(
            std::string("Remettre en place les scénarios de la copie : "_ansi) + copy.title +
                std::string(" ?\r\n\r\nLes scénarios actuels deviennent la copie « avant le "
                            "dernier retour en arrière ». Le compteur ne change pas."_ansi),
            kApplicationTitle, MessageIcon::kQuestion))
        return;
    if (!context_.services.closeSettings()) return;
    dialogs.message(returnTo(context_.platform, context_.state, copy), kApplicationTitle,
                    MessageIcon::kInformation);
}

void SitePage::exportSite() {
    const Platform& platform = context_.platform;
    const std::string day = timeText(platform.events.now()).substr(0, 10);
    const std::string file = platform.dialogs.saveFile("site-" + day + ".zip", kFilter);
    if (file.empty()) return;
    platform.files.replace(
        file, packSite(platform, context_.state.scenario.applicationFolder, context_.archive));
    platform.dialogs.message(
        std::string("Le site est exporté dans "_ansi) + platform.files.shownPath(file) + ".",
        kApplicationTitle, MessageIcon::kInformation);
}

void SitePage::importSite() {
    const Platform& platform = context_.platform;
    if (context_.services.lineBusy()) {
        platform.dialogs.message(
            "Un transfert ou une saisie est en cours : importez le site ensuite."_ansi,
            kApplicationTitle, MessageIcon::kExclamation);
        return;
    }
    const std::string file = platform.dialogs.openFile("", kFilter);
    if (file.empty()) return;
    const SiteImport site = readSite(context_.archive, platform.files.read(file));
    const std::string changes =
        changesOf(platform, context_.state.scenario.applicationFolder, site);
    const std::string ignored =
        site.ignored.empty() ? std::string()
                             : std::string("\r\n\r\nFichiers étrangers, laissés de côté : "_ansi) +
                                   std::to_string(site.ignored.size());
    if (changes.empty()) {
        platform.dialogs.message(std::string("Ce site est déjà celui de l'archive."_ansi) + ignored,
                                 kApplicationTitle, MessageIcon::kInformation);
        return;
    }
    if (!platform.dialogs.confirm(
            std::string("Importer ce site ? Ce qui change :\r\n"_ansi) + changes + ignored,
            kApplicationTitle, MessageIcon::kQuestion) ||
        !context_.services.closeSettings())
        return;
    const std::string done = bringIn(platform, context_.state, context_.archive, site);
    context_.services.reopenPort();
    platform.dialogs.message(done, kApplicationTitle, MessageIcon::kInformation);
}

}  // namespace kalvo
