#include "platform/jet/jet_stream.h"

#include <unistd.h>

#include <cstring>
#include <utility>

namespace kalvo {

namespace {

// Thrown where the stream breaks off; never leaves this file.
struct Broken {};

class StreamReader {
public:
    explicit StreamReader(std::string_view stream) : rest_(stream) {}

    JetTables tables() {
        JetTables tables;
        for (std::size_t table = 0; table < tables.size(); ++table)
            while (nextIsRow()) tables[table].push_back(row(kScenarioTables[table].columns.size()));
        if (tag() != 'D') throw Broken{};
        return tables;
    }

private:
    bool nextIsRow() {
        switch (tag()) {
            case 'R': return true;
            case 'E': return false;
            case 'X': throw reportedError();
            default: throw Broken{};
        }
    }

    JetRow row(std::size_t columns) {
        JetRow row;
        for (std::size_t i = 0; i < columns; ++i) row.push_back(value());
        return row;
    }

    JetValue value() {
        switch (tag()) {
            case 'N': return std::nullopt;
            case 'T': return std::string(text());
            case 'X': throw reportedError();
            default: throw Broken{};
        }
    }

    RuntimeError reportedError() {
        const auto number = static_cast<int>(this->number());
        return {number, std::string(text())};
    }

    char tag() { return take(1).front(); }

    std::uint32_t number() {
        std::uint32_t number = 0;
        std::memcpy(&number, take(sizeof number).data(), sizeof number);
        return number;
    }

    std::string_view text() { return take(number()); }

    std::string_view take(std::size_t count) {
        if (rest_.size() < count) throw Broken{};
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }

    std::string_view rest_;
};

}  // namespace

void JetStreamWriter::value(const JetValue& value) {
    tag(value ? 'T' : 'N');
    if (value) text(*value);
}

void JetStreamWriter::done() {
    tag('D');
    flush();
}

void JetStreamWriter::failed(const RuntimeError& error) {
    tag('X');
    number(static_cast<std::uint32_t>(error.number()));
    text(error.description());
    flush();
}

void JetStreamWriter::number(std::uint32_t number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes({raw, sizeof raw});
}

void JetStreamWriter::text(std::string_view text) {
    number(static_cast<std::uint32_t>(text.size()));
    bytes(text);
}

void JetStreamWriter::bytes(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream_) != bytes.size()) _exit(1);
}

void JetStreamWriter::flush() {
    if (std::fflush(stream_) != 0) _exit(1);
}

std::optional<JetTables> parseJetStream(std::string_view stream) {
    try {
        return StreamReader(stream).tables();
    } catch (const Broken&) {
        return std::nullopt;
    }
}

}  // namespace kalvo
