// A line with the pace and the troubles of a real one.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tools/terminal_line.h"

namespace kalvo {

struct LineFaults {
    // bit/s, 10 bits a character; 0: as fast as the line takes it.
    std::uint32_t speed = 0;

    // Probability, 0 to 1, of a random byte before each byte sent.
    double noise = 0;
    std::uint32_t seed = 1;

    // Silence of so many milliseconds once so many bytes have been sent.
    struct Pause {
        std::int64_t milliseconds = 0;
        std::size_t after = 0;
    };
    std::vector<Pause> pauses = {};
};

// Passes everything on to another line, slowed down and disturbed. The same seed
// gives the same bytes.
class FaultyLine : public TerminalLine {
public:
    FaultyLine(TerminalLine& line, const LineFaults& faults);

    void write(std::string_view bytes) override;
    std::string read(std::int64_t milliseconds) override { return line_.read(milliseconds); }
    void pause(std::int64_t milliseconds) override { line_.pause(milliseconds); }
    [[nodiscard]] std::int64_t now() override { return line_.now(); }

private:
    [[nodiscard]] std::string withNoise(std::string_view bytes);
    void writePaced(std::string_view bytes);

    TerminalLine& line_;
    LineFaults faults_;
    std::mt19937 random_;
    std::vector<LineFaults::Pause>::const_iterator nextPause_;
    std::size_t sent_ = 0;     // bytes asked for, noise not counted
    std::int64_t freeAt_ = 0;  // when the last character will have left, microseconds
};

}  // namespace kalvo
