// The window "Tableau de bord".
#pragma once

#include <QWidget>

#include "dashboard/dashboard_context.h"

class QTabWidget;

namespace kalvo {

class ApplicationPage;
class BatchPage;
class LinePage;
class OptionPage;
class SitePage;

class DashboardWindow : public QWidget {
public:
    explicit DashboardWindow(const DashboardContext& context);

    // Shows everything as it is now.
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QTabWidget* TabTableau = nullptr;
    BatchPage* batches_ = nullptr;
    LinePage* line_ = nullptr;
    ApplicationPage* applications_ = nullptr;
    OptionPage* options_ = nullptr;
    SitePage* site_ = nullptr;
};

}  // namespace kalvo
