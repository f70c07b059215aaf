// How the reading process hands its result to the program: a stream of rows, one
// byte a tag, texts behind their length.
//
//   stream = table table table 'D'  |  ... 'X' number text
//   table  = { 'R' value... } 'E'
//   value  = 'N'  |  'T' text
//   number, length of a text: 4 bytes, native order (both ends are one machine)
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "platform/jet/jet_tables.h"
#include "text/runtime_error.h"

namespace kalvo {

// The reading process' end. A failed write ends that process: its reader is gone.
class JetStreamWriter {
public:
    explicit JetStreamWriter(std::FILE* stream) : stream_(stream) {}

    void beginRow() { tag('R'); }
    void value(const JetValue& value);
    void endTable() { tag('E'); }
    void done();
    void failed(const RuntimeError& error);

private:
    void tag(char tag) { bytes({&tag, 1}); }
    void number(std::uint32_t number);
    void text(std::string_view text);
    void bytes(std::string_view bytes);
    void flush();

    std::FILE* stream_;
};

// The tables in a stream; nothing when the stream ends early or is not one. Throws
// the RuntimeError the stream reports.
[[nodiscard]] std::optional<JetTables> parseJetStream(std::string_view stream);

}  // namespace kalvo
