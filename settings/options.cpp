#include "settings/options.h"

#include <algorithm>
#include <array>
#include <string>

#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr std::string_view kSection = "Options";

constexpr std::array<OptionInfo, 13> kOptions = {{
    {Option::kBuiltText, "TexteConstruit", 0, true,
     "Un scénario « Fichier » écrit à la réception le texte construit par ses étapes, comme au rejeu et à l'essai."_ansi},
    {Option::kWholeReplay, "RejeuComplet", 0, true,
     "Le rejeu d'un fichier saisit tout le script, même sans {TIMER} et après le dernier."_ansi},
    {Option::kPartialFrame, "TramePartielle", 0, true,
     "Le nombre de champs saisi dans le scénario sert à reconstituer les trames partielles."_ansi},
    {Option::kStartPoint, "PointDepart", 0, true,
     "Le premier passage commence au point de départ du scénario."_ansi},
    {Option::kLiteralFields, "ChampsLitteraux", 0, true,
     "Un champ reçu est saisi tel qu'il est imprimé, même s'il contient + ^ % ~ ( ) { ou }."_ansi},
    {Option::kEmptyBuffer, "TamponVide", 0, true,
     "Les restes d'un transfert précédent sont oubliés avant d'interroger le lecteur."_ansi},
    {Option::kJournal, "Journal", 1, false,
     "Chaque lot reçu est gardé sur le disque avant d'être traité (dès le prochain démarrage)."_ansi},
    {Option::kJournalDays, "JournalJours", 30, false,
     "Durée de conservation des lots dans le journal, en jours."_ansi, true},
    {Option::kJournalMegabytes, "JournalMo", 100, false,
     "Taille du journal au-delà de laquelle les lots terminés les plus anciens sont oubliés, en Mo."_ansi,
     true},
    {Option::kTargetGuard, "GardeApplication", 1, false,
     "La saisie s'arrête quand une autre application passe au premier plan."_ansi},
    {Option::kStopKey, "ToucheArret", 1, false, "La touche Échap arrête la saisie en cours."_ansi},
    {Option::kNotifications, "Notifications", 1, false,
     "Une bulle à côté de l'icône dit ce que sont devenus les lots."_ansi},
    {Option::kEraseAfterSuccess, "EffacerApresSucces", 1, false,
     "L'effacement du terminal n'est proposé qu'après un lot saisi ou écrit en entier."_ansi},
}};

}  // namespace

std::span<const OptionInfo> allOptions() { return kOptions; }

const OptionInfo& optionInfo(Option option) {
    return *std::find_if(kOptions.begin(), kOptions.end(),
                         [&](const OptionInfo& info) { return info.option == option; });
}

std::int32_t optionValue(ProfileFiles& profiles, std::string_view applicationFolder,
                         Option option) {
    const OptionInfo& info = optionInfo(option);
    std::int32_t value = info.standard;
    resumeNext([&] {
        value = requiredIntegerPart(
            ReadIniValue(profiles, optionsIni(applicationFolder), kSection, info.key));
    });
    return value;
}

bool optionSet(ProfileFiles& profiles, std::string_view applicationFolder, Option option) {
    return optionValue(profiles, applicationFolder, option) != 0;
}

bool setOption(ProfileFiles& profiles, std::string_view applicationFolder, Option option,
               std::int32_t value) {
    return WriteIniValue(profiles, kSection, optionInfo(option).key, std::to_string(value),
                         optionsIni(applicationFolder)) != 0;
}

}  // namespace kalvo
