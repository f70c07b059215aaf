#include "platform/jet/jet_signature.h"

#include <array>
#include <fstream>
#include <system_error>

namespace kalvo {

namespace {

constexpr std::string_view kJetSignature("\x00\x01\x00\x00Standard Jet DB\x00", 20);
constexpr std::string_view kNewerSignature("\x00\x01\x00\x00Standard ACE DB\x00", 20);
constexpr std::size_t kVersionOffset = 20;

}  // namespace

JetVersion jetVersionOf(std::string_view start) {
    if (start.size() <= kVersionOffset) return JetVersion::kNone;
    if (start.starts_with(kNewerSignature)) return JetVersion::kNewer;
    if (!start.starts_with(kJetSignature)) return JetVersion::kNone;
    switch (start[kVersionOffset]) {
        case 0: return JetVersion::kJet3;
        case 1: return JetVersion::kJet4;
        default: return JetVersion::kNewer;
    }
}

JetVersion jetVersionOfFile(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return JetVersion::kNone;
    std::array<char, kVersionOffset + 1> start{};
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(start.data(), start.size())) return JetVersion::kNone;
    return jetVersionOf(std::string_view(start.data(), start.size()));
}

}  // namespace kalvo
