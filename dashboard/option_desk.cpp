#include "dashboard/option_desk.h"

#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

bool storeOption(const Platform& platform, std::string_view applicationFolder, Option option,
                 std::int32_t value) {
    if (setOption(platform.profiles, applicationFolder, option, value)) return true;
    platform.dialogs.message(std::string("Le réglage n'a pas pu être enregistré dans "_ansi) +
                                 platform.files.shownPath(optionsIni(applicationFolder)) + ".",
                             kApplicationTitle, MessageIcon::kExclamation);
    return false;
}

void takeAdvice(const Platform& platform, std::string_view applicationFolder) {
    std::vector<Option> missing;
    std::string changes;
    for (const OptionInfo& info : allOptions()) {
        if (!info.advisable || optionSet(platform.profiles, applicationFolder, info.option))
            continue;
        missing.push_back(info.option);
        changes += "\r\n- " + std::string(info.sentence);
    }
    if (missing.empty()) {
        platform.dialogs.message("Les réglages conseillés sont déjà en service."_ansi,
                                 kApplicationTitle, MessageIcon::kInformation);
        return;
    }
    if (!platform.dialogs.confirm(
            std::string("Mettre les réglages conseillés en service ? Ce qui change :\r\n"_ansi) +
                changes,
            kApplicationTitle, MessageIcon::kQuestion))
        return;
    for (const Option option : missing)
        if (!storeOption(platform, applicationFolder, option, 1)) return;
}

}  // namespace kalvo
