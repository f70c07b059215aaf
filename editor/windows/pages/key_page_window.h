// The tabs of the particular keys and of the system keys.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <string_view>
#include <vector>

#include "editor/keys/key_tables.h"
#include "editor/settings_context.h"

class QLineEdit;

namespace kalvo {

// What tells the two tabs apart.
struct KeyPageNames {
    QString toolBar;
    QString box;    // object name of the boxes, the index behind it
    QString label;  // the same of their labels
    std::string_view section;
};

class KeyPage : public QWidget {
public:
    KeyPage(const SettingsContext& context, KeyPageNames names, const std::vector<KeyBox>& keys);

    // Whether a label was changed and not stored.
    [[nodiscard]] bool unsaved() const;

private:
    void save();

    const SettingsContext& context_;
    KeyPageNames names_;
    std::vector<QLineEdit*> boxes_;
};

}  // namespace kalvo
