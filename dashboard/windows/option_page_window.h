// The page "Options" of the dashboard.
#pragma once

#include <QWidget>
#include <map>

#include "dashboard/dashboard_context.h"
#include "settings/options.h"

class QGridLayout;

namespace kalvo {

class OptionPage : public QWidget {
public:
    explicit OptionPage(DashboardContext context);

    // Shows what the file holds now.
    void refresh();

protected:
    // A click on a sentence is one on its box.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeGroup(const QString& title, bool advisable);
    void addRow(QGridLayout* grid, const OptionInfo& info);
    [[nodiscard]] QWidget* makeBox(const OptionInfo& info);
    void store(Option option, std::int32_t value);

    DashboardContext context_;
    std::map<Option, QWidget*> boxes_;
};

}  // namespace kalvo
