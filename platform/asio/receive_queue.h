// Received bytes, first in, first out, without a limit.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kalvo {

// Appending and taking cost time in proportion to the bytes moved, whatever waits.
class ReceiveQueue {
public:
    [[nodiscard]] std::size_t size() const noexcept { return bytes_.size() - taken_; }

    void append(std::string_view bytes) {
        // Taken bytes are dropped once they outweigh the rest, so that each byte is
        // moved at most once more.
        if (taken_ > bytes_.size() / 2) {
            bytes_.erase(0, taken_);
            taken_ = 0;
        }
        bytes_.append(bytes);
    }

    // Up to `count` bytes; 0: all.
    std::string take(std::size_t count) {
        if (count == 0 || count >= size()) {
            std::string all = taken_ == 0 ? std::move(bytes_) : bytes_.substr(taken_);
            clear();
            return all;
        }
        std::string some = bytes_.substr(taken_, count);
        taken_ += count;
        return some;
    }

    void clear() noexcept {
        bytes_.clear();
        taken_ = 0;
    }

private:
    std::string bytes_;
    std::size_t taken_ = 0;
};

}  // namespace kalvo
