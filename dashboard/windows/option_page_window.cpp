#include "dashboard/windows/option_page_window.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <utility>

#include "dashboard/option_desk.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

constexpr int kLargestNumber = 1'000'000;

}  // namespace

OptionPage::OptionPage(DashboardContext context) : context_(std::move(context)) {
    auto* const advice =
        makeButton("CmdConseils", "&Réglages conseillés...",
                   "Coche d'un coup tout le premier groupe, après avoir dit ce qui change.");
    connect(advice, &QPushButton::clicked, this, [this] {
        context_.services.deliver(
            [this] { takeAdvice(context_.platform, context_.state.scenario.applicationFolder); });
        refresh();
    });
    auto* const content = new QWidget;
    auto* const groups = new QVBoxLayout(content);
    groups->addWidget(makeGroup("Décoché : comme toujours ; coché : conseillé", true));
    groups->addWidget(advice, 0, Qt::AlignLeft);
    groups->addWidget(makeGroup("Sécurité des données", false));
    groups->addStretch();
    auto* const scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    // The page's own background shows.
    scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
    refresh();
}

QWidget* OptionPage::makeGroup(const QString& title, bool advisable) {
    auto* const group = new QGroupBox(title);
    auto* const grid = new QGridLayout(group);
    grid->setColumnStretch(1, 1);
    for (const OptionInfo& info : allOptions())
        if (info.advisable == advisable) addRow(grid, info);
    return group;
}

void OptionPage::addRow(QGridLayout* grid, const OptionInfo& info) {
    QWidget* const box = makeBox(info);
    box->setObjectName("Opt" + toQString(info.key));
    box->setAccessibleName(toQString(info.sentence));
    box->setToolTip("Options.ini : " + toQString(info.key));
    boxes_[info.option] = box;
    auto* const sentence = new QLabel(toQString(info.sentence));
    sentence->setWordWrap(true);
    sentence->setBuddy(box);
    sentence->installEventFilter(this);
    const int row = grid->rowCount();
    grid->addWidget(box, row, 0);
    grid->addWidget(sentence, row, 1);
}

QWidget* OptionPage::makeBox(const OptionInfo& info) {
    if (!info.number) {
        auto* const box = new QCheckBox;
        connect(box, &QCheckBox::toggled, this,
                [this, option = info.option](bool on) { store(option, on ? 1 : 0); });
        return box;
    }
    auto* const box = new QSpinBox;
    box->setRange(0, kLargestNumber);
    box->setSpecialValueText("sans limite");
    // Stored once it is typed, not digit by digit.
    box->setKeyboardTracking(false);
    connect(box, &QSpinBox::valueChanged, this,
            [this, option = info.option](int value) { store(option, value); });
    return box;
}

void OptionPage::store(Option option, std::int32_t value) {
    context_.services.deliver([&] {
        storeOption(context_.platform, context_.state.scenario.applicationFolder, option, value);
    });
    refresh();
}

void OptionPage::refresh() {
    for (const auto& [option, widget] : boxes_) {
        const QSignalBlocker quiet(widget);
        const std::int32_t value = optionValue(context_.platform.profiles,
                                               context_.state.scenario.applicationFolder, option);
        if (auto* const box = qobject_cast<QCheckBox*>(widget))
            box->setChecked(value != 0);
        else if (auto* const number = qobject_cast<QSpinBox*>(widget); !number->hasFocus())
            number->setValue(value);
    }
}

bool OptionPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease)
        if (auto* const sentence = qobject_cast<QLabel*>(watched)) {
            if (auto* const box = qobject_cast<QCheckBox*>(sentence->buddy())) box->click();
        }
    return QWidget::eventFilter(watched, event);
}

}  // namespace kalvo
