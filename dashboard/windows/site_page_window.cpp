#include "dashboard/windows/site_page_window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstddef>

#include "platform/dialogs.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

SitePage::SitePage(const DashboardContext& context) : context_(context) {
    auto* const explanation = new QLabel(
        "La base des scénarios est copiée chaque jour, au premier démarrage du programme ; les dix "
        "derniers jours sont gardés dans le dossier « Copies » du site.");
    explanation->setWordWrap(true);
    LstCopies = new QListWidget;
    LstCopies->setObjectName("LstCopies");
    LstCopies->setToolTip("Les copies de Scen.mdb, la plus récente en haut.");
    auto* const label = new QLabel("Co&pies de la base des scénarios :");
    label->setBuddy(LstCopies);
    CmdRevenir = new QPushButton("Re&venir à cette copie...");
    CmdRevenir->setObjectName("CmdRevenir");
    CmdRevenir->setToolTip("Remet en place les scénarios de la copie choisie.");
    auto* const now = new QPushButton("Copier &maintenant");
    now->setObjectName("CmdCopierBase");
    now->setToolTip("Refait la copie d'aujourd'hui, par exemple avant un essai.");
    for (QPushButton* const button : {CmdRevenir, now}) pressWithEnter(button);
    connect(CmdRevenir, &QPushButton::clicked, this, [this] { goBack(); });
    connect(now, &QPushButton::clicked, this, [this] { copyNow(); });
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(CmdRevenir);
    buttons->addWidget(now);
    buttons->addStretch();
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(label);
    layout->addWidget(LstCopies, 1);
    layout->addLayout(buttons);
    refresh();
}

void SitePage::refresh() {
    const int row = std::max(LstCopies->currentRow(), 0);
    context_.services.deliver([this] {
        copies_ = siteCopies(context_.platform.files, context_.state.scenario.applicationFolder);
    });
    LstCopies->clear();
    for (const SiteCopy& copy : copies_) LstCopies->addItem(toQString(copy.title));
    LstCopies->setCurrentRow(std::min(row, LstCopies->count() - 1));
    CmdRevenir->setEnabled(LstCopies->count() > 0);
}

void SitePage::copyNow() {
    context_.services.deliver(
        [this] { makeDailyCopy(context_.platform, context_.state.scenario.applicationFolder); });
    refresh();
}

void SitePage::goBack() {
    const int row = LstCopies->currentRow();
    if (row < 0 || row >= static_cast<int>(copies_.size())) return;
    const SiteCopy copy = copies_[static_cast<std::size_t>(row)];
    context_.services.deliver([&] {
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
    });
    refresh();
}

}  // namespace kalvo
