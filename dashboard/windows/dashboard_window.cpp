#include "dashboard/windows/dashboard_window.h"

#include <QCloseEvent>
#include <QEvent>
#include <QScreen>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include "dashboard/windows/application_page_window.h"
#include "dashboard/windows/batch_page_window.h"
#include "dashboard/windows/line_page_window.h"
#include "dashboard/windows/option_page_window.h"
#include "dashboard/windows/site_page_window.h"
#include "editor/windows/placed_window.h"

namespace kalvo {

namespace {

// Room for the list and what is in a batch, at 96 dpi; the toolkit scales it.
constexpr QSize kFirstSize(860, 600);
constexpr QSize kWindowFrame(12, 36);

}  // namespace

DashboardWindow::DashboardWindow(const DashboardContext& context) {
    setObjectName("frmTableau");
    setWindowTitle("Tableau de bord");
    setAttribute(Qt::WA_QuitOnClose, false);
    batches_ = new BatchPage(context);
    line_ = new LinePage(context);
    applications_ = new ApplicationPage(context);
    options_ = new OptionPage(context);
    site_ = new SitePage(context);
    TabTableau = new QTabWidget;
    TabTableau->setObjectName("TabTableau");
    TabTableau->addTab(batches_, "&Lots");
    TabTableau->addTab(line_, "L&igne");
    TabTableau->addTab(applications_, "&Applications");
    TabTableau->addTab(options_, "&Options");
    TabTableau->addTab(site_, "&Site");
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(TabTableau);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] { close(); });
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [this] { refresh(); });
    resize(kFirstSize.boundedTo(screen()->availableGeometry().size() - kWindowFrame));
    restorePlace(this, context.platform.registry);
}

void DashboardWindow::refresh() {
    batches_->refresh();
    if (line_->isVisible()) line_->refresh();
    applications_->refresh();
    options_->refresh();
    site_->refresh();
}

void DashboardWindow::closeEvent(QCloseEvent* event) {
    keepPlace(this);
    event->accept();
}

// What happened while another window was in front.
void DashboardWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) refresh();
    QWidget::changeEvent(event);
}

}  // namespace kalvo
