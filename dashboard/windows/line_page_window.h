// The page "Ligne" of the dashboard.
#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>

#include "dashboard/dashboard_context.h"
#include "dashboard/line_check.h"
#include "dashboard/windows/line_table_view.h"

class QLabel;
class QPushButton;
class QTableView;

namespace kalvo {

class LinePage : public QWidget {
public:
    explicit LinePage(const DashboardContext& context);

    // Shows what has happened on the line since the last look.
    void refresh();

protected:
    // The line is looked at while somebody can see it.
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QWidget* makeTable();
    [[nodiscard]] QLayout* makeButtons();
    void showPort();
    void check();
    void save();

    DashboardContext context_;
    LineCheck check_;
    LineTable table_;
    QLabel* LblPort = nullptr;
    QLabel* LblLignes = nullptr;
    QLabel* LblLiaison = nullptr;
    QTableView* TblLigne = nullptr;
    QPushButton* CmdTester = nullptr;
    QPushButton* CmdPause = nullptr;
    QTimer timer_;
    std::uint64_t next_ = 0;  // event of the tap
};

}  // namespace kalvo
