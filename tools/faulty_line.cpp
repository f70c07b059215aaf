#include "tools/faulty_line.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr std::int64_t kBitsPerCharacter = 10;
constexpr std::int64_t kMicroseconds = 1000000;
constexpr std::uint32_t kSlicesPerSecond = 50;

}  // namespace

FaultyLine::FaultyLine(TerminalLine& line, const LineFaults& faults)
    : line_(line), faults_(faults), random_(faults.seed) {
    std::stable_sort(faults_.pauses.begin(), faults_.pauses.end(),
                     [](const auto& a, const auto& b) { return a.after < b.after; });
    nextPause_ = faults_.pauses.cbegin();
}

void FaultyLine::write(std::string_view bytes) {
    while (nextPause_ != faults_.pauses.cend() && nextPause_->after <= sent_ + bytes.size()) {
        const std::size_t before = nextPause_->after > sent_ ? nextPause_->after - sent_ : 0;
        writePaced(withNoise(bytes.substr(0, before)));
        bytes.remove_prefix(before);
        sent_ += before;
        line_.pause(nextPause_->milliseconds);
        ++nextPause_;
    }
    writePaced(withNoise(bytes));
    sent_ += bytes.size();
}

// Compares the generator's own numbers: the distributions of the library differ
// from one system to the next, the generator does not.
std::string FaultyLine::withNoise(std::string_view bytes) {
    if (faults_.noise <= 0) return std::string(bytes);
    const double limit = faults_.noise * static_cast<double>(std::mt19937::max());
    std::string disturbed;
    for (const char byte : bytes) {
        if (static_cast<double>(random_()) < limit)
            disturbed.push_back(static_cast<char>(random_() & 0xFFU));
        disturbed.push_back(byte);
    }
    return disturbed;
}

void FaultyLine::writePaced(std::string_view bytes) {
    if (bytes.empty()) return;
    if (faults_.speed == 0) return line_.write(bytes);
    const std::size_t slice =
        std::max<std::size_t>(1, faults_.speed / (kBitsPerCharacter * kSlicesPerSecond));
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, slice);
        bytes.remove_prefix(part.size());
        line_.write(part);
        const std::int64_t duration = static_cast<std::int64_t>(part.size()) * kBitsPerCharacter *
                                      kMicroseconds / faults_.speed;
        freeAt_ = std::max(freeAt_, line_.now() * 1000) + duration;
        line_.pause(freeAt_ / 1000 - line_.now());
    }
}

}  // namespace kalvo
