// Whatever stands in a registry file: what is set is what is found, and other values stay.
#include <algorithm>

#include "platform/linux/settings/reg_file_text.h"
#include "tests/fuzz/fuzz_property.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

bool same(std::optional<RegistryValue> a, std::optional<RegistryValue> b) {
    if (!a || !b) return !a && !b;
    // The text of a REG_SZ may or may not end with NULs; they are not part of it.
    for (std::string* text : {&a->data, &b->data})
        while (a->type == kRegSz && text->ends_with('\0')) text->pop_back();
    return a->type == b->type && a->data == b->data;
}

std::string without(std::string path, std::string_view end) {
    path.erase(path.find_last_not_of(end) + 1);
    return path;
}

// Blanks at the end of a key's name are lost in the format, also before closing backslashes.
std::string keyPath(std::string path) {
    while (without(path, "\\").ends_with(' ')) path = without(without(path, "\\"), " ");
    return path;
}

bool hasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace

void fuzz(FuzzInput& input) {
    const std::string path = keyPath(input.text());
    const std::string name = input.text();
    const RegistryValue value{input.ConsumeIntegralInRange<std::uint32_t>(0, 12), input.text()};
    const std::string otherPath = input.text();
    const std::string otherName = input.text();
    const std::string content = input.rest();

    const auto written = withRegistryValue(content, path, name, value);
    require(written.has_value() == !(hasControl(path) || hasControl(name)),
            "only control characters are refused");
    if (!written) return;
    require(same(findRegistryValue(*written, path, name), value), "what is set is found");
    require(withRegistryValue(*written, path, name, value) == written,
            "setting it again changes nothing");
    require((equalIgnoringCase(without(otherPath, "\\"), without(path, "\\")) &&
             equalIgnoringCase(otherName, name)) ||
                same(findRegistryValue(*written, otherPath, otherName),
                     findRegistryValue(content, otherPath, otherName)),
            "other values stay");
}

}  // namespace kalvo
