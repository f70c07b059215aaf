#include "dashboard/windows/line_page_window.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>
#include <optional>
#include <vector>

#include "journal/batch_journal.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

constexpr int kLooks = 200;  // milliseconds between two of them
constexpr int kRowMargin = 4;

QString modemText(const std::optional<ModemLines>& lines) {
    if (!lines) return "Ce port ne dit rien de ses lignes de contrôle.";
    const auto one = [](const char* name, bool on) {
        return QString(name) + (on ? " : oui" : " : non");
    };
    return QStringList{one("CTS", lines->cts), one("DSR", lines->dsr), one("DCD", lines->dcd),
                       one("RI", lines->ring)}
        .join("   ");
}

}  // namespace

LinePage::LinePage(const DashboardContext& context)
    : context_(context), check_(context.platform, context.state, context.line) {
    LblPort = new QLabel;
    LblPort->setObjectName("LblPort");
    LblPort->setTextFormat(Qt::PlainText);
    LblLignes = new QLabel;
    LblLignes->setObjectName("LblLignes");
    LblLignes->setToolTip("Ce que le terminal, ou son câble, dit sur les lignes de contrôle.");
    LblLiaison = new QLabel;
    LblLiaison->setObjectName("LblLiaison");
    LblLiaison->setWordWrap(true);
    LblLiaison->setTextFormat(Qt::PlainText);
    auto* const port = new QHBoxLayout;
    port->addWidget(LblPort);
    port->addStretch();
    port->addWidget(LblLignes);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(port);
    layout->addWidget(makeTable(), 1);
    layout->addWidget(LblLiaison);
    layout->addLayout(makeButtons());
    timer_.setInterval(kLooks);
    connect(&timer_, &QTimer::timeout, this, [this] { refresh(); });
}

QWidget* LinePage::makeTable() {
    TblLigne = makeRowTable(
        "TblLigne", "Ce qui passe sur la ligne, 16 octets par rangée ; <0D> est un retour chariot.",
        table_);
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFontMetrics metrics(font);
    TblLigne->setFont(font);
    TblLigne->setShowGrid(false);
    TblLigne->verticalHeader()->setDefaultSectionSize(metrics.height() + kRowMargin);
    const auto widthOf = [&](const char* text) { return metrics.horizontalAdvance(text) + 16; };
    TblLigne->setColumnWidth(LineTable::kTime, widthOf("00:00:00.000"));
    TblLigne->setColumnWidth(LineTable::kSign, widthOf("envoyé"));
    TblLigne->setColumnWidth(LineTable::kText, widthOf("Port COM 3 ouvert, 115200,N,8,1"));
    return TblLigne;
}

QLayout* LinePage::makeButtons() {
    CmdTester =
        makeButton("CmdTester", "&Tester la liaison",
                   "Interroge le lecteur, ou écoute le terminal, et dit ce qui est arrivé.");
    CmdPause = makeButton("CmdPause", "&Pause", "Arrête la liste ; la réception continue.");
    CmdPause->setCheckable(true);
    auto* const save =
        makeButton("CmdCapture", "E&nregistrer...",
                   "Écrit la liste dans un fichier, que le simulateur de terminaux peut rejouer.");
    auto* const row = new QHBoxLayout;
    for (QPushButton* const button : {CmdTester, CmdPause, save}) row->addWidget(button);
    row->addStretch();
    connect(CmdTester, &QPushButton::clicked, this, [this] { check(); });
    connect(CmdPause, &QPushButton::toggled, this, [this] { refresh(); });
    connect(save, &QPushButton::clicked, this,
            [this] { context_.services.deliver([this] { this->save(); }); });
    return row;
}

void LinePage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
    timer_.start();
}

void LinePage::hideEvent(QHideEvent* event) {
    timer_.stop();
    QWidget::hideEvent(event);
}

void LinePage::refresh() {
    showPort();
    if (const auto finding = check_.look()) LblLiaison->setText(toQString(*finding));
    if (CmdPause->isChecked()) return;
    const LineTap::Traffic traffic = context_.line.since(next_);
    next_ = traffic.next;
    if (traffic.events.empty()) return;
    // Whoever has scrolled up reads there.
    QScrollBar* const bar = TblLigne->verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    table_.append(traffic.events);
    if (atEnd) TblLigne->scrollToBottom();
}

void LinePage::showPort() {
    const LineTap& line = context_.line;
    QString port = "Port COM " + QString::number(line.CommPort());
    if (const std::string device = line.deviceName(); !device.empty())
        port += " (" + toQString(device) + ")";
    LblPort->setText(line.PortOpen() ? port + " ouvert, " + toQString(line.settings())
                                     : port + " fermé");
    LblLignes->setText(line.PortOpen() ? modemText(line.modemLines()) : QString());
}

void LinePage::check() {
    if (context_.services.lineBusy()) {
        LblLiaison->setText("Un transfert ou une saisie est en cours : essayez ensuite.");
        return;
    }
    LblLiaison->setText("Interrogation du terminal...");
    LblLiaison->repaint();
    context_.services.deliver([this] { LblLiaison->setText(toQString(check_.begin())); });
    refresh();
}

void LinePage::save() {
    const std::string day = timeText(context_.platform.events.now()).substr(0, 10);
    const std::string file = context_.platform.dialogs.saveFile(
        "ligne-" + day + ".txt", "Fichiers texte (*.txt)|*.txt|Tous (*.*)|*.*");
    if (file.empty()) return;
    const std::vector<LineEvent> events(table_.events().begin(), table_.events().end());
    context_.platform.files.replace(file, captureText(events));
}

}  // namespace kalvo
