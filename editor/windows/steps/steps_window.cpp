#include "editor/windows/steps/steps_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "editor/windows/steps/actions_pane.h"
#include "editor/windows/steps/key_picker_pane.h"
#include "editor/windows/steps/test_pane.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

// Of a screen with room to spare; the window manager's frame takes the rest of a small one.
constexpr QSize kUsualSize(860, 520);
constexpr int kFrameWidth = 12;
constexpr int kFrameHeight = 48;

}  // namespace

StepsWindow::StepsWindow(QWidget* owner, const SettingsContext& context,
                         std::function<void()> closed)
    : QWidget(owner, Qt::Window), context_(context), closed_(std::move(closed)) {
    setObjectName("frmEtapes");
    setAttribute(Qt::WA_QuitOnClose, false);
    panes_ = new QSplitter;
    panes_->setChildrenCollapsible(false);
    FrmActions = new ActionsPane(context_);
    FrmTouches = new KeyPickerPane(context_);
    FrmTest = new TestPane(context_, [this] { close(); });
    for (QWidget* const pane : std::initializer_list<QWidget*>{FrmActions, FrmTouches, FrmTest})
        panes_->addWidget(pane);
    panes_->setStretchFactor(0, 3);
    panes_->setStretchFactor(1, 2);
    panes_->setStretchFactor(2, 3);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(panes_);
    new QShortcut(Qt::Key_F6, this, [this] { turnPane(1); });
    new QShortcut(Qt::SHIFT | Qt::Key_F6, this, [this] { turnPane(-1); });
    const QRect area = owner->screen()->availableGeometry();
    const QSize room = area.size() - QSize(kFrameWidth, kFrameHeight);
    resize(kUsualSize.boundedTo(room));
}

void StepsWindow::turnPane(int step) {
    const int count = panes_->count();
    int pane = step > 0 ? -1 : 0;
    for (int i = 0; i < count; ++i)
        if (panes_->widget(i)->isAncestorOf(QApplication::focusWidget())) pane = i;
    panes_->widget((pane + step + count) % count)->setFocus();
}

void StepsWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    closed_();
}

void StepsWindow::refresh() {
    const std::string& name = context_.current.scenarioName;
    const bool inForce = equalIgnoringCase(context_.state.scenario.active.ScenarioName, name);
    setWindowTitle("Actions : " + toQString(name) + (inForce ? " (en service)" : ""));
    FrmActions->refresh();
    FrmTouches->refresh();
    FrmTest->refresh();
}

}  // namespace kalvo
