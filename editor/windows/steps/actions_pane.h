// The step list FrmActions with its context menu frmpopup.
#pragma once

#include <QKeySequence>
#include <QWidget>
#include <functional>

#include "editor/settings_context.h"

class QMenu;

namespace kalvo {

class RowListView;

class ActionsPane : public QWidget {
public:
    explicit ActionsPane(const SettingsContext& context);

    // Shows what the controllers hold.
    void refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeMenu();
    void addEntry(const char* name, const QString& text, const QKeySequence& shortcut,
                  const std::function<void()>& operation);

    const SettingsContext& context_;
    RowListView* LstChamps;
    QMenu* frmpopup = nullptr;
};

}  // namespace kalvo
