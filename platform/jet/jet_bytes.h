// Bytes of a Jet file: little-endian numbers, every read checked against what there is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kalvo {

// The file is damaged; `detail` (French, code page 1252) says what was found, if there
// is more to say than that something lies outside of its place. Thrown by the parts of
// the reader; readJetTables makes the run-time error of it.
struct JetFault {
    std::string detail;
};

class JetBytes {
public:
    constexpr JetBytes() = default;
    constexpr explicit JetBytes(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] constexpr std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] constexpr std::string_view text() const { return bytes_; }

    // The number of `width` bytes (1 to 8) at `at`.
    [[nodiscard]] std::uint64_t number(std::size_t at, std::size_t width) const {
        const std::string_view raw = part(at, width).text();
        std::uint64_t value = 0;
        for (std::size_t i = width; i-- > 0;)
            value = (value << 8U) | static_cast<unsigned char>(raw[i]);
        return value;
    }
    [[nodiscard]] std::uint8_t u8(std::size_t at) const {
        return static_cast<std::uint8_t>(number(at, 1));
    }
    [[nodiscard]] std::uint16_t u16(std::size_t at) const {
        return static_cast<std::uint16_t>(number(at, 2));
    }
    [[nodiscard]] std::uint32_t u32(std::size_t at) const {
        return static_cast<std::uint32_t>(number(at, 4));
    }

    [[nodiscard]] JetBytes part(std::size_t at, std::size_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at) throw JetFault{};
        return JetBytes(bytes_.substr(at, size));
    }
    [[nodiscard]] JetBytes from(std::size_t at) const {
        if (at > bytes_.size()) throw JetFault{};
        return JetBytes(bytes_.substr(at));
    }

private:
    std::string_view bytes_;
};

}  // namespace kalvo
