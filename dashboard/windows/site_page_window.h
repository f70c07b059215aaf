// The page "Site" of the dashboard.
#pragma once

#include <QWidget>
#include <vector>

#include "dashboard/dashboard_context.h"
#include "dashboard/site_copies.h"

class QListWidget;
class QPushButton;

namespace kalvo {

class SitePage : public QWidget {
public:
    explicit SitePage(const DashboardContext& context);

    void refresh();

private:
    void copyNow();
    void goBack();

    DashboardContext context_;
    std::vector<SiteCopy> copies_;
    QListWidget* LstCopies = nullptr;
    QPushButton* CmdRevenir = nullptr;
};

}  // namespace kalvo
