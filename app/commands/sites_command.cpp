// sites: the sites of this user, and who works on them.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/running_site.h"
#include "app/sites.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

// "COM3<TAB>scenario<TAB>who works on it".
std::string describeSite(const std::string& folder) {
    const SystemBindings usual = createSystemBindings(std::nullopt);
    if (!usual.files->folderExists(folder)) return std::string("dossier introuvable"_ansi);
    const SystemBindings site = folder == usual.applicationFolder
                                    ? createSystemBindings(std::nullopt)
                                    : createSystemBindings(toUtf8(folder));
    const std::string port = readPortSerie(*site.profiles, folder, port_serie::kPort);
    const std::string running =
        fromUtf8(RunningSite::stateOf(folder).value_or(toUtf8("arrêté"_ansi)));
    return (port.empty() ? "sans port" : "COM" + std::to_string(integerPart(port))) + "\t" +
           readSetting(*site.registry, kRacScenChx) + "\t" + running.substr(0, running.find('\n'));
}

}  // namespace

int runSites(const CommandLine&, SystemBindings& bindings) {
    for (const std::string& folder : knownSites(*bindings.profiles, knownSitesFile()))
        writeOutput(toUtf8(folder + "\t" + describeSite(folder) + "\n"));
    return kExitSuccess;
}

}  // namespace kalvo
