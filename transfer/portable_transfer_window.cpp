#include "transfer/portable_transfer_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

constexpr int kLongestNumber = 9;

QLabel* namedLabel(const QString& name, const QString& text) {
    auto* const label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

PortableTransferWindow::PortableTransferWindow(
    QWidget* owner, const Platform& platform, const MultidllFactory& factory,
    std::string applicationFolder, std::function<void(const std::function<void()>&)> deliver)
    : QWidget(owner, Qt::Dialog),
      deliver_(std::move(deliver)),
      library_(factory([this] { return transfer_.breakRequested(); })),
      transfer_(platform, *library_, std::move(applicationFolder)) {
    setObjectName("frmTransfert");
    setWindowTitle("Communication HT630");
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    if (owner != nullptr) setWindowModality(Qt::WindowModal);

    controls_ = new QWidget;
    auto* const columns = new QVBoxLayout(controls_);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(fileBox());
    columns->addWidget(parameterBox());
    auto* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    layout->addWidget(controls_);
    layout->addWidget(progressBox());
    setRunning(false);
    transfer_.load(*this);
}

QPushButton* PortableTransferWindow::button(const QString& name, const QString& caption,
                                            const QString& tip, const std::function<void()>& run) {
    auto* const made = makeButton(name, caption, tip);
    connect(made, &QPushButton::clicked, this, run);
    return made;
}

QWidget* PortableTransferWindow::fileBox() {
    auto* const box = new QGroupBox("Fichiers");
    auto* const grid = new QGridLayout(box);
    grid->setColumnStretch(2, 1);
    const QString created = toQString(transfer_.shownPath(kTestFile));
    const QString uploaded = toQString(transfer_.shownPath(kUploadedFile));
    const QString remote = toQString(kRemoteUploadFile);
    grid->addWidget(button("cmdOpen", "&Open COM1",
                           "Ouvre le premier port série à 9600 bit/s, 8 bits, sans parité.",
                           [this] { run([this] { transfer_.openPort(); }); }),
                    0, 0);
    grid->addWidget(button("cmdDownload", "&Download file",
                           "Choisit un fichier du poste et l'envoie au terminal portable.",
                           [this] { run([this] { transfer_.download(*this); }); }),
                    1, 0);
    grid->addWidget(namedLabel("lblDownload", "PC ---> PT600"), 1, 1);
    grid->addWidget(namedLabel("lblRemote", toQString(kRemoteDownloadFile)), 1, 2);
    grid->addWidget(button("cmdUpload", "&Upload file",
                           QString("Va chercher %1 sur le terminal portable.").arg(remote),
                           [this] { run([this] { transfer_.upload(*this); }); }),
                    2, 0);
    grid->addWidget(namedLabel("lblUpload", "PT600  --->  PC"), 2, 1);
    lblUploaded = namedLabel("lblUploaded", uploaded);
    grid->addWidget(lblUploaded, 2, 2);
    grid->addWidget(button("cmdCreate", "&Create testfile",
                           "Écrit un fichier d'essai de 450 enregistrements sur le poste.",
                           [this] { run([this] { transfer_.createTestFile(*this); }); }),
                    3, 0);
    grid->addWidget(namedLabel("lblCreated", created), 3, 2);
    return box;
}

QWidget* PortableTransferWindow::parameterBox() {
    auto* const box = new QGroupBox("Liaison");
    auto* const grid = new QGridLayout(box);
    grid->setColumnStretch(3, 1);
    txtEscDelay = parameterRow(grid, "EscDelay", "&ESC Delay", LineParameter::kEscDelay,
                               "Le délai entre deux contrôles de l'interruption.");
    txtNakDelay = parameterRow(grid, "NakDelay", "&NAK Delay", LineParameter::kNakDelay,
                               "Le délai avant de redemander un paquet mal reçu.");
    txtTimeOut = parameterRow(grid, "TimeOut", "&Time out", LineParameter::kTimeOut,
                              "Le temps de silence toléré du terminal portable.");
    lblVersion = namedLabel("lblVersion", "");
    grid->addWidget(lblVersion, grid->rowCount(), 0, 1, 4);
    if (const std::string remark = library_->remark(); !remark.empty()) {
        auto* const lblRemarque = namedLabel("lblRemarque", toQString(remark));
        lblRemarque->setWordWrap(true);
        grid->addWidget(lblRemarque, grid->rowCount(), 0, 1, 4);
    }
    return box;
}

QLineEdit* PortableTransferWindow::parameterRow(QGridLayout* grid, const QString& name,
                                                const QString& caption, LineParameter parameter,
                                                const QString& tip) {
    const int row = grid->rowCount();
    auto* const edit = new QLineEdit;
    edit->setObjectName("txt" + name);
    edit->setToolTip(tip + " Entrée le règle.");
    edit->setMaxLength(kLongestNumber);
    edit->setMaximumWidth(edit->fontMetrics().averageCharWidth() * 2 * kLongestNumber);
    auto* const label = new QLabel(caption);
    label->setBuddy(edit);
    const auto set = [this, edit, parameter] {
        run([&] { transfer_.set(*this, parameter, fromQString(edit->text())); });
    };
    connect(edit, &QLineEdit::returnPressed, this, set);
    grid->addWidget(label, row, 0);
    grid->addWidget(edit, row, 1);
    grid->addWidget(
        button("cmd" + name, "Set", "Règle la valeur ; la case montre celle retenue.", set), row,
        2);
    return edit;
}

QWidget* PortableTransferWindow::progressBox() {
    auto* const box = new QWidget;
    auto* const layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    lblBytes = namedLabel("lblBytes", "Bytes: ");
    lblPackets = namedLabel("lblPackets", "Packets: ");
    PrgB = new QProgressBar;
    PrgB->setObjectName("PrgB");
    // Its place stays, so that nothing jumps when it comes and goes.
    QSizePolicy policy = PrgB->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    PrgB->setSizePolicy(policy);
    PrgB->hide();
    cmdBreak = button("cmdBreak", "&Interrompre", "Interrompt le transfert en cours (Échap).",
                      [this] { breakOff(); });
    cmdClose =
        button("cmdClose", "&Fermer", "Ferme le port et la fenêtre (Échap).", [this] { close(); });
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdBreak);
    buttons->addWidget(cmdClose);
    layout->addWidget(lblBytes, 0, 0);
    layout->addWidget(lblPackets, 0, 1);
    layout->addWidget(PrgB, 1, 0, 1, 2);
    layout->addLayout(buttons, 2, 0, 1, 2);
    return box;
}

void PortableTransferWindow::run(const std::function<void()>& operation) {
    if (running_) return;
    // The program may take the owner, and this window with it, while it runs.
    const QPointer<PortableTransferWindow> self(this);
    QWidget* const focus = focusWidget();
    setRunning(true);
    deliver_(operation);
    if (self.isNull()) return;
    setRunning(false);
    if (focus != nullptr) focus->setFocus();
    if (closing_) close();
}

void PortableTransferWindow::setRunning(bool running) {
    running_ = running;
    cmdBreak->setEnabled(running);
    if (running) cmdBreak->setFocus();
    controls_->setEnabled(!running);
    cmdClose->setEnabled(!running);
}

void PortableTransferWindow::breakOff() { transfer_.requestBreak(); }

void PortableTransferWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (running_) {
        breakOff();
    } else {
        close();
    }
}

void PortableTransferWindow::closeEvent(QCloseEvent* event) {
    if (running_) {
        closing_ = true;
        breakOff();
        event->ignore();
        return;
    }
    deliver_([this] { transfer_.unload(); });
}

void PortableTransferWindow::showVersion(std::int32_t version) {
    lblVersion->setText("DLL Version: " + QString::number(version));
}

void PortableTransferWindow::showParameter(LineParameter parameter, std::int32_t value) {
    const std::array<QLineEdit*, 3> edits = {txtEscDelay, txtNakDelay, txtTimeOut};
    edits.at(static_cast<std::size_t>(parameter))->setText(QString::number(value));
}

void PortableTransferWindow::showBar(std::int32_t maximum) {
    PrgB->setRange(0, maximum);
    PrgB->setValue(0);
    PrgB->show();
}

void PortableTransferWindow::setBar(std::int32_t value) {
    PrgB->setValue(value);
    PrgB->repaint();
}

void PortableTransferWindow::hideBar() { PrgB->hide(); }

void PortableTransferWindow::showStoredName(std::string_view name) {
    lblUploaded->setText(toQString(transfer_.shownPath(name)));
}

void PortableTransferWindow::showCounts(std::int32_t bytes, std::int32_t packets) {
    lblBytes->setText("Bytes: " + QString::number(bytes));
    lblPackets->setText("Packets: " + QString::number(packets));
}

}  // namespace kalvo
