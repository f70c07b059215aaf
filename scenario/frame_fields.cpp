#include "scenario/frame_fields.h"

namespace kalvo {

std::string_view FrameFieldTable::at(std::size_t index) const {
    if (index > ends_.size() || index > kLastIndex) return {};
    const std::size_t start = index == 0 ? 0 : ends_[index - 1];
    const std::size_t end = index < ends_.size() ? ends_[index] : text_.size();
    return std::string_view(text_).substr(start, end - start);
}

}  // namespace kalvo
