// Messages over a pair of pipes.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/shared/multidll_messages.h"

namespace kalvo {

// Each message behind its length. The pipes belong to whoever made them.
class PipeStream : public MessageStream {
public:
    PipeStream(HANDLE input, HANDLE output) : input_(input), output_(output) {}

    void send(std::string_view message) override {
        const std::string framed = MessageWriter().add(message).bytes();
        for (std::string_view left = framed; !left.empty();) {
            DWORD written = 0;
            if (WriteFile(output_, left.data(), static_cast<DWORD>(left.size()), &written,
                          nullptr) == 0)
                throw otherEndGone();
            left.remove_prefix(written);
        }
    }

    [[nodiscard]] std::string receive() override {
        MessageReader head(read(4));
        const std::int32_t length = head.number();
        if (length < 0 || length > kLongest) throw otherEndGone();
        return read(static_cast<std::size_t>(length));
    }

private:
    static constexpr std::int32_t kLongest = 1 << 20;

    std::string read(std::size_t length) {
        std::string bytes(length, '\0');
        for (std::size_t place = 0; place < length;) {
            DWORD count = 0;
            if (ReadFile(input_, bytes.data() + place, static_cast<DWORD>(length - place), &count,
                         nullptr) == 0 ||
                count == 0)
                throw otherEndGone();
            place += count;
        }
        return bytes;
    }

    HANDLE input_;
    HANDLE output_;
};

}  // namespace kalvo
