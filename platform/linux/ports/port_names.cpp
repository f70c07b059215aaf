#include "platform/linux/ports/port_names.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "text/ansi_text.h"

namespace kalvo {

namespace fs = std::filesystem;

namespace {

constexpr int kHighestPort = 256;

bool same(const std::string& path, const std::string& other) {
    std::error_code error;
    return path == other || fs::equivalent(path, other, error);
}

}  // namespace

LinuxPortNames::LinuxPortNames(ProfileFiles& profileFiles, std::string iniFile,
                               SerialDevices devices)
    : profileFiles_(profileFiles), iniFile_(std::move(iniFile)), devices_(std::move(devices)) {}

std::map<int, LinuxPortNames::Meaning> LinuxPortNames::meanings() const {
    std::map<int, Meaning> meanings;
    for (int number = 1; number <= kHighestPort; ++number) {
        std::string entry =
            toUtf8(profileFiles_.read(iniFile_, "Ports", "COM" + std::to_string(number)));
        if (!entry.empty()) meanings[number] = {std::move(entry), true};
    }
    std::vector<std::string> taken;
    taken.reserve(meanings.size());
    for (const auto& [number, meaning] : meanings) taken.push_back(devices_.locate(meaning.entry));

    std::vector<std::string> displaced;
    const auto found = devices_.paths();
    int number = 0;
    for (const std::string& path : found) {
        if (meanings.try_emplace(++number, Meaning{path, false}).second) continue;
        if (std::none_of(taken.begin(), taken.end(),
                         [&](const std::string& other) { return same(path, other); }))
            displaced.push_back(path);
    }
    for (const std::string& path : displaced) {
        do ++number;
        while (meanings.contains(number));
        if (number <= kHighestPort) meanings[number] = {path, false};
    }
    return meanings;
}

PortDevice LinuxPortNames::device(int number) const {
    const auto meaning = meanings();
    const auto found = meaning.find(number);
    if (found == meaning.end()) return {};
    const auto& [entry, configured] = found->second;
    const std::string identity = configured ? entry : devices_.identityOf(entry);
    if (identity.empty() || identity.find("://") != std::string::npos) return {entry};
    return {devices_.nameOf(identity), configured ? "" : fromUtf8(identity),
            [devices = devices_, identity] { return devices.locate(identity); }};
}

std::vector<PortEntry> LinuxPortNames::list() const {
    std::vector<PortEntry> entries;
    for (const auto& [number, meaning] : meanings()) {
        const std::string path = devices_.locate(meaning.entry);
        entries.push_back({number, path.empty() ? devices_.nameOf(meaning.entry) : fromUtf8(path),
                           devices_.describe(path)});
    }
    return entries;
}

}  // namespace kalvo
