#include "scenario/partial_frames.h"

#include <cstddef>

namespace kalvo {

namespace {

// For each sub-frame number from 1 to count, the slots that it fills.
std::vector<std::vector<std::size_t>> slotsBySubFrame(const std::vector<SubFrameSlot>& subFrameMap,
                                                      std::size_t count) {
    std::vector<std::vector<std::size_t>> slots(count + 1);
    for (std::size_t i = 1; i < subFrameMap.size(); ++i) {
        const std::int16_t subFrame = subFrameMap[i].subFrame;
        if (subFrame >= 1 && static_cast<std::size_t>(subFrame) <= count)
            slots[static_cast<std::size_t>(subFrame)].push_back(i);
    }
    return slots;
}

}  // namespace

std::string reassembleSubFrames(std::string_view frame,
                                const std::vector<SubFrameSlot>& subFrameMap, std::int16_t count) {
    if (count < 1) return {};
    const auto subFrames = static_cast<std::size_t>(count);
    const auto slotsOf = slotsBySubFrame(subFrameMap, subFrames);

    std::vector<std::string_view> slots(subFrameMap.size());
    std::string record;
    std::size_t start = 0;
    std::size_t received = 0;
    for (std::size_t end = frame.find('\r'); end != std::string_view::npos;
         end = frame.find('\r', start)) {
        ++received;
        for (const std::size_t slot : slotsOf[received])
            slots[slot] = frame.substr(start, end - start);
        start = end + 1;
        if (received < subFrames) continue;
        for (std::size_t i = 1; i < slots.size(); ++i) {
            record.append(slots[i]).push_back('\r');
            slots[i] = {};
        }
        received = 0;
    }
    return record;
}

}  // namespace kalvo
