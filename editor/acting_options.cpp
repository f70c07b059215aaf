#include "editor/acting_options.h"

#include "settings/options.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

bool matters(Option option, const ScenarioRecord& scenario, std::string_view terminalType) {
    const bool toFile = scenario.Type == kFileType;
    switch (option) {
        case Option::kBuiltText: return toFile;
        case Option::kWholeReplay:
        case Option::kLiteralFields: return !toFile;
        case Option::kPartialFrame: return scenario.Trame == 1;
        case Option::kStartPoint: return scenario.Depart > 0;
        case Option::kEmptyBuffer:
            return equalIgnoringCase(terminalType, "Optimus") ||
                   equalIgnoringCase(terminalType, "ScanPal");
        default: return false;
    }
}

}  // namespace

std::vector<std::string> actingOptions(ProfileFiles& profiles, std::string_view applicationFolder,
                                       const ScenarioRecord& scenario,
                                       std::string_view terminalType) {
    std::vector<std::string> lines;
    for (const OptionInfo& info : allOptions())
        if (info.advisable && matters(info.option, scenario, terminalType) &&
            optionSet(profiles, applicationFolder, info.option))
            lines.push_back(
                std::string("Option ").append(info.key).append(" : ").append(info.sentence));
    return lines;
}

}  // namespace kalvo
