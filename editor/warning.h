// The warning box of the settings' controllers.
#pragma once

#include <string_view>

#include "platform/dialogs.h"
#include "settings/settings_store.h"

namespace kalvo {

inline void showWarning(Dialogs& dialogs, std::string_view text) {
    dialogs.message(text, kApplicationTitle, MessageIcon::kExclamation);
}

}  // namespace kalvo
