// The tabs of the particular keys and of the system keys.
#pragma once

#include <QString>
#include <QWidget>

#include "editor/keys/key_labels.h"
#include "editor/settings_context.h"

namespace kalvo {

// What tells the two tabs apart.
struct KeyPageNames {
    QString toolBar;
    QString box;    // object name of the boxes, the index behind it
    QString label;  // the same of their labels
};

class KeyPage : public QWidget {
public:
    KeyPage(const SettingsContext& context, const KeyPageNames& names, KeyLabels& keys);

private:
    void save();

    const SettingsContext& context_;
    KeyLabels& keys_;
};

}  // namespace kalvo
