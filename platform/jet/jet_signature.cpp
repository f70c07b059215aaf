#include "platform/jet/jet_signature.h"

#include <array>
#include <fstream>
#include <system_error>

#include "platform/sqlite/database_path.h"

namespace kalvo {

namespace {

// The first page: four bytes, the engine's name with its NUL, the version.
constexpr std::string_view kSignature("\x00\x01\x00\x00Standard Jet DB\x00", 20);
constexpr std::size_t kVersionOffset = 20;

}  // namespace

JetVersion jetVersionOf(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return JetVersion::kNone;
    std::array<char, kVersionOffset + 1> start{};
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(start.data(), start.size())) return JetVersion::kNone;
    if (std::string_view(start.data(), kSignature.size()) != kSignature) return JetVersion::kNone;
    switch (start[kVersionOffset]) {
        case 0: return JetVersion::kJet3;
        case 1: return JetVersion::kJet4;
        default: return JetVersion::kNone;
    }
}

bool isJetDatabase(std::string_view path) {
    return jetVersionOf(databaseFile(path)) != JetVersion::kNone;
}

}  // namespace kalvo
