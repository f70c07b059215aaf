#include "editor/access_lock.h"

#include "platform/dialogs.h"
#include "platform/serial_port.h"

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

void answerEraseQuestion(const Platform& platform, EraseQuestion& question, bool erase) {
    if (erase) platform.port.Output(kEraseCommand);
    question.pending = 0;
}

}  // namespace kalvo
