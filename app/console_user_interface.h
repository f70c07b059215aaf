// The user interface of command-line use: messages are entries of a log, which shows
// them on standard error; questions read a line from standard input. The tray tip is an
// entry too.
#pragma once

#include "platform/dialogs.h"
#include "platform/log.h"
#include "platform/notify_icon.h"

namespace kalvo {

// Writes one line of code page 1252 text to standard error, in UTF-8. Line ends inside the
// text become " | " so that a message stays one line.
void writeErrorLine(std::string_view text);

// Standard error alone: the texts as they are.
class ConsoleLog : public Log {
public:
    void write(LogLevel, std::string_view text) noexcept override;
};

class ConsoleDialogs : public Dialogs {
public:
    explicit ConsoleDialogs(Log& said) : said_(said) {}

    void message(std::string_view text, std::string_view title, MessageIcon icon) override;
    bool confirm(std::string_view text, std::string_view title, MessageIcon icon) override;
    std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                        std::string_view defaultText) override;
    std::string openFile(std::string_view startFolder, std::string_view filter) override;
    std::string saveFile(std::string_view name, std::string_view filter) override;
    void beep() override {}

private:
    Log& said_;
};

class ConsoleNotifyIcon : public NotifyIcon {
public:
    explicit ConsoleNotifyIcon(Log& said) : said_(said) {}

    void add(std::string_view tip) override;
    void modify(std::string_view tip) override;
    void remove() override { shown_.clear(); }
    void notify(std::string_view text, LogLevel level) override { said_.write(level, text); }

private:
    Log& said_;
    std::string shown_;
};

}  // namespace kalvo
