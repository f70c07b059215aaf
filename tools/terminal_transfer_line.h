// A terminal's line as the line of a file transfer. It is open as long as it lives.
#pragma once

#include <algorithm>
#include <string>

#include "platform/transfer_line.h"
#include "tools/terminal_line.h"

namespace kalvo {

class TerminalTransferLine : public TransferLine {
public:
    explicit TerminalTransferLine(TerminalLine& line) : line_(line) {}

    void open(int /*port*/, std::string_view /*settings*/) override {}
    void close() override {}
    [[nodiscard]] bool isOpen() const override { return true; }
    std::size_t write(std::string_view bytes, int /*milliseconds*/) override {
        line_.write(bytes);
        return bytes.size();
    }
    std::size_t read(std::span<char> buffer, int milliseconds) override {
        if (received_.empty()) received_ = line_.read(milliseconds);
        const std::size_t count = received_.copy(buffer.data(), buffer.size());
        received_.erase(0, count);
        return count;
    }
    void flushInput() override {
        received_.clear();
        static_cast<void>(line_.read(0));
    }
    [[nodiscard]] std::int64_t now() override { return line_.now(); }

private:
    TerminalLine& line_;
    std::string received_;
};

}  // namespace kalvo
