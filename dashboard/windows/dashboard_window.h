// The window "Tableau de bord".
#pragma once

#include <QWidget>

#include "dashboard/dashboard_context.h"

class QTabWidget;

namespace kalvo {

class BatchPage;

class DashboardWindow : public QWidget {
public:
    explicit DashboardWindow(const DashboardContext& context);

    // Something has become of a batch.
    void batchesChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QTabWidget* TabTableau = nullptr;
    BatchPage* batches_ = nullptr;
};

}  // namespace kalvo
