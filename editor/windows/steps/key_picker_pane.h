// The key picker FrmTouches.
#pragma once

#include <QWidget>

#include "editor/settings_context.h"

namespace kalvo {

class RowListView;

class KeyPickerPane : public QWidget {
public:
    explicit KeyPickerPane(const SettingsContext& context);

    // Shows what the controllers hold.
    void refresh();

private:
    const SettingsContext& context_;
    RowListView* LstTouches;
};

}  // namespace kalvo
