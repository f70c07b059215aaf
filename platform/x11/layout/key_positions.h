// Where Windows has its virtual keys: the OEM keys of the layouts whose tables
// differ, and the scan codes of everything that is no character key.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kalvo {

// A virtual key and its scan code (set 1, no E0/E1 prefix).
struct KeyPosition {
    std::uint8_t scanCode;
    std::uint8_t virtualKey;
};

// The families of OEM key positions; what is not listed has those of `us`.
enum class OemFamily : std::uint8_t { us, french, german, belgian };

// The OEM keys of one family, in the order of their scan codes.
[[nodiscard]] std::vector<KeyPosition> oemKeys(OemFamily family);

// Named, modifier, keypad, function and media keys: the same in every layout.
[[nodiscard]] std::span<const KeyPosition> namedKeys();

// The digit or letter that the US layout has at a scan code; 0 elsewhere. Digits
// keep their virtual key by position in every layout, letters where the layout
// has no Latin letters of its own.
[[nodiscard]] std::uint8_t usCharacterKey(std::uint8_t scanCode);

}  // namespace kalvo
