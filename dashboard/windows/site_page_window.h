// The page "Site" of the dashboard.
#pragma once

#include <QStringListModel>
#include <QWidget>
#include <vector>

#include "dashboard/dashboard_context.h"
#include "dashboard/site_copies.h"

class QLayout;
class QListView;
class QPushButton;

namespace kalvo {

class SitePage : public QWidget {
public:
    explicit SitePage(DashboardContext context);

    void refresh();

private:
    // What buttons do, run as events of the program.
    void copyNow();
    void goBack();
    [[nodiscard]] QWidget* makeExchange();
    QPushButton* addButton(QLayout* row, const char* name, const char* caption, const char* tip,
                           void (SitePage::*action)());
    void exportSite();
    void importSite();

    DashboardContext context_;
    std::vector<SiteCopy> copies_;
    QStringListModel titles_;
    QListView* LstCopies = nullptr;
    QPushButton* CmdRevenir = nullptr;
};

}  // namespace kalvo
