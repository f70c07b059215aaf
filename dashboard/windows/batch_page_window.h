// The page "Lots" of the dashboard.
#pragma once

#include <QStringListModel>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>

#include "dashboard/batch_list.h"
#include "dashboard/dashboard_context.h"
#include "dashboard/windows/batch_table_view.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QTableView;

namespace kalvo {

class BatchPage : public QWidget {
public:
    explicit BatchPage(const DashboardContext& context);

    // Shows the journal as it is now; what is selected stays so.
    void refresh();

private:
    [[nodiscard]] QWidget* makeSearch();
    [[nodiscard]] QWidget* makeTable();
    [[nodiscard]] QWidget* makeLook();
    [[nodiscard]] QLayout* makeButtons();
    QPushButton* addButton(QLayout* row, const char* name, const char* caption, const char* tip,
                           const std::function<void(const JournalEntry&)>& action);
    void search();
    void change(const std::function<void()>& change);
    [[nodiscard]] const JournalEntry* selected() const;
    [[nodiscard]] QString countText() const;
    void show(const JournalEntry* entry);
    void copy(const JournalEntry& entry) const;

    DashboardContext context_;
    BatchList list_;
    BatchTable table_;
    std::unique_ptr<BatchDesk> desk_;
    QLineEdit* TxtChercher = nullptr;
    QComboBox* CboEtat = nullptr;
    QTableView* TblLots = nullptr;
    QLabel* LblNombre = nullptr;
    QLabel* LblFrappe = nullptr;
    QStringListModel fields_;
    QStringListModel keys_;
    std::vector<QPushButton*> buttons_;
    QTimer searchTimer_;
    std::int64_t shown_ = 0;
    QString problem_;  // that keeps the journal from being read
};

}  // namespace kalvo
