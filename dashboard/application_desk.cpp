#include "dashboard/application_desk.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/profile_files.h"
#include "settings/application_paths.h"
#include "settings/application_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::array<std::string_view, kApplicationColumns> kHeadings = {
    "Application",           "Méthode"_ansi,          "Pause touche (ms)",
    "Pause validation (ms)", "Avance (touches)"_ansi, "Étendues"_ansi};

// What no line "[name]" can hold, or is not read back from it.
std::string_view refusalOf(std::string_view name) {
    if (name.find_first_of("[]\r\n") != std::string_view::npos)
        return "Un nom d'application ne peut contenir de crochets."_ansi;
    return {};
}

std::string mannerText(const TypingManner& manner) {
    std::string text;
    text.append("méthode "_ansi).append(allMethods()[static_cast<std::size_t>(manner.method)].name);
    const auto add = [&](int value, std::string_view what) {
        if (value > 0) text += ", " + std::to_string(value) + std::string(what);
    };
    add(manner.keyPause, " ms après chaque touche"_ansi);
    add(manner.confirmPause, " ms après une validation"_ansi);
    add(manner.lead, " touches d'avance"_ansi);
    if (manner.extendedKeys) text += std::string(", touches étendues"_ansi);
    return text;
}

}  // namespace

std::string_view headingOf(int column) { return kHeadings.at(static_cast<std::size_t>(column)); }

void ApplicationDesk::refresh(std::vector<std::string> target) {
    target_ = std::move(target);
    reread();
}

void ApplicationDesk::reread() {
    const std::string file = applicationsIni(folder_);
    rows_.clear();
    for (std::string& name : platform_.profiles.sections(file)) {
        // Of equal sections only the first counts.
        if (name.empty() || rowOf(name) >= 0) continue;
        ApplicationEntry entry{std::move(name), {}};
        for (int key = 0; key < kMannerKeys; ++key)
            entry.values.at(static_cast<std::size_t>(key)) = ReadIniValue(
                platform_.profiles, file, entry.name, mannerKey(static_cast<MannerKey>(key)).name);
        rows_.push_back(std::move(entry));
    }
}

std::string ApplicationDesk::cellOf(int row, int column) const {
    const ApplicationEntry& entry = rows_.at(static_cast<std::size_t>(row));
    if (column == 0) return entry.name == kEveryApplication ? "* (toutes)" : entry.name;
    const std::string& value = entry.values.at(static_cast<std::size_t>(column - 1));
    const bool ignored =
        !value.empty() && !meansSomething(value, static_cast<MannerKey>(column - 1));
    return ignored ? value + std::string(" (ignoré)"_ansi) : value;
}

int ApplicationDesk::rowOf(std::string_view name) const {
    const auto found = std::find_if(
        rows_.begin(), rows_.end(),
        [name](const ApplicationEntry& entry) { return equalIgnoringCase(entry.name, name); });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

bool ApplicationDesk::applies(int row) const {
    const std::string& name = rows_.at(static_cast<std::size_t>(row)).name;
    if (target_.empty()) return false;
    return name == kEveryApplication ||
           std::any_of(target_.begin(), target_.end(),
                       [&](const std::string& target) { return equalIgnoringCase(target, name); });
}

std::string ApplicationDesk::targetText() const {
    if (target_.empty())
        return std::string(
            "Dernière saisie : aucune depuis le démarrage, ou dans une application que la session ne nomme pas."_ansi);
    std::string names = target_.front();
    for (std::size_t i = 1; i < target_.size(); ++i) names += ", " + target_[i];
    const TypingManner manner =
        applicationManners(platform_.profiles, folder_, [](std::string_view) {})(target_);
    return std::string("Dernière saisie : "_ansi) + names + " ; " + mannerText(manner) + ".";
}

std::optional<int> ApplicationDesk::numberAt(int row, MannerKey key) const {
    return numberIn(
        rows_.at(static_cast<std::size_t>(row)).values.at(static_cast<std::size_t>(key)), key);
}

std::optional<int> ApplicationDesk::methodAt(int row) const {
    const auto method = methodIn(rows_.at(static_cast<std::size_t>(row)).values.front());
    return method ? std::optional(static_cast<int>(*method)) : std::nullopt;
}

std::optional<std::string> ApplicationDesk::add() {
    std::string proposed;
    if (!target_.empty() && rowOf(target_.front()) < 0) proposed = target_.front();
    const auto answer = platform_.dialogs.inputBox(
        "Nom de l'application : sa classe de fenêtre (WM_CLASS) ou, sous Windows, son fichier .exe ; * pour toutes."_ansi,
        kApplicationTitle, proposed);
    if (!answer) return std::nullopt;
    const std::string name(trimBlanks(*answer));
    if (name.empty()) return std::nullopt;
    if (const std::string_view refusal = refusalOf(name); !refusal.empty()) {
        platform_.dialogs.message(refusal, kApplicationTitle, MessageIcon::kExclamation);
        return std::nullopt;
    }
    if (rowOf(name) < 0 && !set(name, MannerKey::kMethod, "")) return std::nullopt;
    reread();
    return name;
}

void ApplicationDesk::setNumber(int row, MannerKey key, std::optional<int> value) {
    static_cast<void>(set(rows_.at(static_cast<std::size_t>(row)).name, key,
                          value ? std::to_string(*value) : std::string()));
    reread();
}

void ApplicationDesk::setMethod(int row, std::optional<int> method) {
    static_cast<void>(
        set(rows_.at(static_cast<std::size_t>(row)).name, MannerKey::kMethod,
            method ? allMethods()[static_cast<std::size_t>(*method)].name : std::string_view()));
    reread();
}

void ApplicationDesk::remove(int row) {
    const std::string name = rows_.at(static_cast<std::size_t>(row)).name;
    if (!platform_.dialogs.confirm(std::string("Supprimer l'entrée « "_ansi) + name +
                                       std::string(" » d'Applications.ini ?"_ansi),
                                   kApplicationTitle, MessageIcon::kQuestion))
        return;
    if (!platform_.profiles.removeSection(applicationsIni(folder_), name)) sayNotStored();
    reread();
}

void ApplicationDesk::take(const MannerTrial& trial) {
    const std::string verdict = verdictOf(trial);
    if (!wantsEntry(trial) || trial.application.empty()) {
        platform_.dialogs.message(verdict, kApplicationTitle, MessageIcon::kInformation);
        return;
    }
    if (!platform_.dialogs.confirm(verdict + "\r\n\r\n[" + trial.application +
                                       "] : " + mannerText(trial.manner) +
                                       std::string("\r\n\r\nL'écrire dans Applications.ini ?"_ansi),
                                   kApplicationTitle, MessageIcon::kQuestion))
        return;
    for (int i = 0; i < kMannerKeys; ++i) {
        const auto key = static_cast<MannerKey>(i);
        const std::string text = textOf(trial.manner, key);
        const bool same = text == ReadIniValue(platform_.profiles, applicationsIni(folder_),
                                               trial.application, mannerKey(key).name);
        if (!same && !set(trial.application, key, text)) break;
    }
    reread();
}

bool ApplicationDesk::set(std::string_view entry, MannerKey key, std::string_view value) {
    if (WriteIniValue(platform_.profiles, entry, mannerKey(key).name, value,
                      applicationsIni(folder_)) != 0)
        return true;
    sayNotStored();
    return false;
}

void ApplicationDesk::sayNotStored() {
    platform_.dialogs.message(std::string("Le réglage n'a pas pu être enregistré dans "_ansi) +
                                  platform_.files.shownPath(applicationsIni(folder_)) + ".",
                              kApplicationTitle, MessageIcon::kExclamation);
}

}  // namespace kalvo
