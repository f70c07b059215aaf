#include "tray/menu_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/qt/pictogram.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/xwayland.h"

namespace kalvo {

namespace {

constexpr int kAutoClose = 500;   // milliseconds between two looks at the mouse
constexpr int kRightMargin = 20;  // 300 twips, at 96 dpi; the toolkit scales it
constexpr int kPictureSize = 20;
// The window that stays, and room below it for the frame a window manager adds.
constexpr int kStayingWidth = 240;
constexpr int kFrameHeight = 48;

constexpr Qt::WindowFlags kMenuFlags =
    Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;

constexpr std::array<const char*, kMenuCaptions.size()> kPictures = {
    "parametrage", "information", "transfert", "commande", "quitter", "fichier"};

// A label in the colours of a highlighted or an ordinary entry, or of one that would do nothing.
void paint(QLabel& label, bool highlighted, bool useful) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::Window,
                     highlighted ? QApplication::palette().color(QPalette::Highlight) : Qt::white);
    palette.setColor(QPalette::WindowText, highlighted ? Qt::white : useful ? Qt::black : Qt::gray);
    label.setPalette(palette);
}

}  // namespace

MenuWindow::MenuWindow(ForegroundWindow& foreground, std::function<void(MenuEntry)> choose,
                       std::function<bool(MenuEntry)> useful)
    : QWidget(nullptr, kMenuFlags),
      foreground_(foreground),
      choose_(std::move(choose)),
      useful_(std::move(useful)) {
    setObjectName("frmIn");
    setWindowTitle("KALVO Horizon");
    setAttribute(Qt::WA_QuitOnClose, false);
    setMouseTracking(true);
    setAutoFillBackground(true);
    QPalette white = palette();
    white.setColor(QPalette::Window, Qt::white);
    white.setColor(QPalette::WindowText, Qt::black);
    setPalette(white);

    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(1, 1, 1, 1);
    grid->setSpacing(0);
    reason_ = new QLabel;
    reason_->setWordWrap(true);
    reason_->setMargin(6);
    reason_->hide();
    grid->addWidget(reason_, 0, 0, 1, 2);
    for (int i = 0; i < static_cast<int>(kMenuCaptions.size()); ++i) addEntry(i);
    paintHighlight();

    Timer1.setInterval(kAutoClose);
    connect(&Timer1, &QTimer::timeout, this, [this] { onTimer(); });
}

void MenuWindow::addEntry(int index) {
    const auto i = static_cast<std::size_t>(index);
    auto* const grid = static_cast<QGridLayout*>(layout());
    const auto add = [&](const QString& name, int column) {
        auto* const label = new QLabel;
        label->setObjectName(name + QString::number(index));
        label->setAutoFillBackground(true);
        label->setMouseTracking(true);
        label->setMargin(4);
        label->installEventFilter(this);
        grid->addWidget(label, index + 1, column);
        return label;
    };
    picIco[i] = add("picIco", 0);
    LblMenu[i] = add("LblMenu", 1);
    LblMenu[i]->setText(toQString(kMenuCaptions[i]));
    grid->setColumnStretch(1, 1);
}

void MenuWindow::popUp() {
    if (stays_) return;
    foreground_.remember();
    hide();
    highlight_.overBackground();
    paintHighlight();
    place(0);
    show();
    raise();
    activateWindow();
    setFocus();
    Timer1.start();
}

void MenuWindow::stay(const QString& reason) {
    stays_ = true;
    setWindowFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowTitleHint |
                   Qt::CustomizeWindowHint);
    reason_->setText(reason);
    reason_->setMinimumHeight(reason_->heightForWidth(kStayingWidth));
    setFixedWidth(kStayingWidth);
    reason_->show();
    // Whoever made it knows what its right button shows.
    setContextMenuPolicy(Qt::CustomContextMenu);
    foreground_.remember();
    place(kFrameHeight);
    show();
    Timer1.start();
}

void MenuWindow::leave() {
    if (!stays_) return;
    stays_ = false;
    unload();
    setWindowFlags(kMenuFlags);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    reason_->hide();
    setMinimumWidth(0);
    setMaximumWidth(QWIDGETSIZE_MAX);
}

void MenuWindow::makeWay() {
    unload();
    foreground_.giveBack();
}

void MenuWindow::place(int bottomMargin) {
    layout()->activate();
    resize(sizeHint());
    const QScreen& screen = *QApplication::primaryScreen();
    const int right = screen.geometry().right() + 1 - kRightMargin;
    const int bottom = screen.availableGeometry().bottom() + 1;
    move(right - width(), bottom - bottomMargin - height());
}

void MenuWindow::unload() {
    if (stays_) return;
    Timer1.stop();
    hide();
}

void MenuWindow::take(int index) {
    makeWay();
    choose_(static_cast<MenuEntry>(index));
}

void MenuWindow::paintHighlight() {
    for (std::size_t i = 0; i < LblMenu.size(); ++i) {
        const bool highlighted = static_cast<int>(i) == highlight_.index();
        const bool useful = useful_(static_cast<MenuEntry>(i));
        paint(*LblMenu[i], highlighted, useful);
        paint(*picIco[i], highlighted, useful);
        picIco[i]->setPixmap(
            pictogram(kPictures[i], picIco[i]->palette().color(QPalette::WindowText))
                .pixmap(QSize(kPictureSize, kPictureSize), devicePixelRatioF()));
    }
}

// The window that stays has no other way to learn who had the focus before it.
void MenuWindow::onTimer() {
    if (stays_)
        foreground_.remember();
    else if (!isActiveWindow() && (throughXwayland() || !geometry().contains(QCursor::pos())))
        unload();
}

// The only way to the program stays within reach.
void MenuWindow::closeEvent(QCloseEvent* event) {
    if (!stays_) return;
    event->ignore();
    showMinimized();
}

bool MenuWindow::eventFilter(QObject* watched, QEvent* event) {
    const int entry = entryOf(watched);
    // A window that opens under the place where Xwayland last saw the pointer is not pointed at.
    const bool enters = event->type() == QEvent::Enter && !throughXwayland();
    if (enters || event->type() == QEvent::MouseMove) {
        highlight_.over(entry);
        paintHighlight();
        // Handed on, the move would count as one over the window's background.
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const bool right = static_cast<QMouseEvent*>(event)->button() == Qt::RightButton;
        if (stays_ && right) return false;
        take(entry);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void MenuWindow::mouseMoveEvent(QMouseEvent*) {
    highlight_.overBackground();
    paintHighlight();
}

void MenuWindow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Down: highlight_.down(); break;
        case Qt::Key_Up: highlight_.up(); break;
        case Qt::Key_Escape: makeWay(); return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (highlight_.index() != MenuHighlight::kNone) take(highlight_.index());
            return;
        default: QWidget::keyPressEvent(event); return;
    }
    paintHighlight();
}

int MenuWindow::entryOf(const QObject* watched) const {
    const auto in = [watched](const auto& labels) {
        return std::find(labels.begin(), labels.end(), watched) - labels.begin();
    };
    const auto entry = in(LblMenu);
    return static_cast<int>(entry < std::ssize(LblMenu) ? entry : in(picIco));
}

}  // namespace kalvo
