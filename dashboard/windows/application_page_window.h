// The page "Applications" of the dashboard.
#pragma once

#include <QWidget>
#include <functional>
#include <map>

#include "dashboard/application_desk.h"
#include "dashboard/dashboard_context.h"
#include "dashboard/windows/application_table_view.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLayout;
class QPushButton;
class QSpinBox;
class QTableView;

namespace kalvo {

class ApplicationPage : public QWidget {
public:
    explicit ApplicationPage(const DashboardContext& context);

    // Shows what the file holds now.
    void refresh();

private:
    [[nodiscard]] QWidget* makeTable();
    [[nodiscard]] QWidget* makeEntry();
    [[nodiscard]] QLayout* makeButtons();
    [[nodiscard]] QSpinBox* makeNumber(MannerKey key, const char* tip);
    QPushButton* addButton(QLayout* row, const char* name, const char* caption, const char* tip,
                           void (ApplicationPage::*action)());
    // Runs as an event of the program and shows what the file holds afterwards, with the same
    // entry selected.
    void change(const std::function<void()>& change);
    [[nodiscard]] int row() const;
    void showEntry();
    void add();
    void remove();
    void tryIt();

    DashboardContext context_;
    ApplicationDesk desk_;
    ApplicationTable table_;
    QLabel* LblCible = nullptr;
    QTableView* TblApplications = nullptr;
    QGroupBox* FraEntree = nullptr;
    QComboBox* CboMethode = nullptr;
    QComboBox* CboEtendues = nullptr;
    std::map<MannerKey, QSpinBox*> numbers_;
    QPushButton* CmdSupprimer = nullptr;
};

}  // namespace kalvo
