// The fields of a frame.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// Fields 0, 1, 2, ... of a frame, kept as one text and the places where they end.
class FrameFieldTable {
public:
    // The last field index that holds text; what belongs to later ones is dropped.
    static constexpr std::size_t kLastIndex = 100000;

    void reserve(std::size_t frameLength) { text_.reserve(frameLength); }

    // Adds a character of the frame: CR ends a field, LF is left out.
    void add(char character) {
        if (character == '\r')
            endField();
        else if (character != '\n' && ends_.size() <= kLastIndex)
            text_.push_back(character);
    }

    // Fields ended by a CR, those behind kLastIndex included (`FieldCount`).
    [[nodiscard]] std::size_t FieldCount() const { return count_; }

    // A field; index FieldCount() is what followed the last CR. Empty beyond.
    [[nodiscard]] std::string_view at(std::size_t index) const;

private:
    void endField() {
        ++count_;
        if (ends_.size() <= kLastIndex) ends_.push_back(text_.size());
    }

    std::string text_;
    std::vector<std::size_t> ends_;
    std::size_t count_ = 0;
};

}  // namespace kalvo
