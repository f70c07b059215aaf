// The user interface of command-line use: messages are lines on standard error,
// written in the encoding of the terminal (UTF-8); questions read a line from
// standard input. The tray tip is shown as a line too.
#pragma once

#include "platform/dialogs.h"
#include "platform/notify_icon.h"

namespace kalvo {

// Writes one line of code page 1252 text to standard error. Line ends inside the
// text become " | " so that a message stays one line.
void writeErrorLine(std::string_view text);

class ConsoleDialogs : public Dialogs {
public:
    void message(std::string_view text, std::string_view title, MessageIcon icon) override;
    bool confirm(std::string_view text, std::string_view title, MessageIcon icon) override;
    std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                        std::string_view defaultText) override;
    std::string openFile(std::string_view startFolder, std::string_view filter) override;
    void beep() override {}
};

class ConsoleNotifyIcon : public NotifyIcon {
public:
    void add(std::string_view tip) override;
    void modify(std::string_view tip) override;
    void remove() override { shown_.clear(); }
    void notify(std::string_view text) override { writeErrorLine(text); }

private:
    std::string shown_;
};

}  // namespace kalvo
