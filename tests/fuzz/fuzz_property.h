// What the fuzz targets share: bytes become typed input, and a property that does not
// hold ends the run as a finding. A target defines kalvo::fuzz.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace kalvo {

// Texts are taken from the front. In an input a text ends with "\" and any other
// character ("\|" in the corpus), and "\\" stands for "\".
class FuzzInput : public FuzzedDataProvider {
public:
    using FuzzedDataProvider::FuzzedDataProvider;

    // A text without these characters, for formats that have no room for them.
    std::string text(std::string_view without = {}) {
        std::string taken = ConsumeRandomLengthString();
        std::erase_if(taken, [&](char c) { return without.find(c) != without.npos; });
        return taken;
    }
    std::string rest() { return ConsumeRemainingBytesAsString(); }
    [[nodiscard]] bool spent() { return remaining_bytes() == 0; }
};

inline void require(bool holds, std::string_view property) {
    if (holds) return;
    std::cerr << "PROPERTY DOES NOT HOLD: " << property << std::endl;
    std::abort();
}

void fuzz(FuzzInput& input);

}  // namespace kalvo

extern "C" inline __attribute__((used)) int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                                                   std::size_t size) {
    kalvo::FuzzInput input(data, size);
    kalvo::fuzz(input);
    return 0;
}
