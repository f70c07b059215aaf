#include "editor/access_lock.h"

#include "platform/dialogs.h"

namespace kalvo {

namespace {

constexpr std::string_view kPassword = "plmoknijb842";

}  // namespace

bool tryPassword(const Platform& platform, AccessLock& lock, std::string_view password) {
    if (password != kPassword) {
        platform.dialogs.message("Mot de passe non valide !", kLoginTitle,
                                 MessageIcon::kExclamation);
        return false;
    }
    lock.accessLevel = 1;
    return true;
}

}  // namespace kalvo
