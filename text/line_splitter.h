// Lines of a text, which may come in blocks.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// Cuts blocks into lines without their ends (CR LF or LF), as FileSystem::readLines
// hands them over; holds no more than the line a block left unfinished.
class LineSplitter {
public:
    template <typename Visit>
    void feed(std::string_view block, const Visit& visit) {
        for (std::size_t end = block.find('\n'); end != std::string_view::npos;
             end = block.find('\n')) {
            std::string_view line = block.substr(0, end);
            if (!begun_.empty()) line = begun_ += line;
            if (line.ends_with('\r')) line.remove_suffix(1);
            visit(line);
            begun_.clear();
            block.remove_prefix(end + 1);
        }
        begun_ += block;
    }

    // Hands over a last line that has no end.
    template <typename Visit>
    void finish(const Visit& visit) {
        if (!begun_.empty()) visit(begun_);
        begun_.clear();
    }

private:
    std::string begun_;
};

// Hands over the lines of a whole text.
template <typename Visit>
void visitLines(std::string_view text, const Visit& visit) {
    LineSplitter lines;
    lines.feed(text, visit);
    lines.finish(visit);
}

}  // namespace kalvo
