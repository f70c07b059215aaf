// What the user is told, written down as well.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/log.h"
#include "platform/notify_icon.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

[[nodiscard]] constexpr LogLevel levelOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::kCritical: return LogLevel::kError;
        case MessageIcon::kExclamation: return LogLevel::kWarning;
        default: return LogLevel::kInformation;
    }
}

// Messages and questions with their answers; not what the user types into a box.
class LoggedDialogs : public Dialogs {
public:
    LoggedDialogs(Dialogs& shown, Log& log) : shown_(shown), log_(log) {}

    // Written first: a box may stand for hours.
    void message(std::string_view text, std::string_view title, MessageIcon icon) override {
        log_.write(levelOf(icon), std::string("Message : ").append(text));
        shown_.message(text, title, icon);
    }
    bool confirm(std::string_view text, std::string_view title, MessageIcon icon) override {
        const bool yes = shown_.confirm(text, title, icon);
        log_.write(LogLevel::kInformation,
                   std::string("Question : ").append(text).append(yes ? " Oui" : " Non"));
        return yes;
    }
    std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                        std::string_view defaultText) override {
        return shown_.inputBox(prompt, title, defaultText);
    }
    std::string openFile(std::string_view startFolder, std::string_view filter) override {
        return shown_.openFile(startFolder, filter);
    }
    std::string saveFile(std::string_view name, std::string_view filter) override {
        return shown_.saveFile(name, filter);
    }
    void beep() override { shown_.beep(); }

private:
    Dialogs& shown_;
    Log& log_;
};

// Notices, and each tip that is a new one.
class LoggedNotifyIcon : public NotifyIcon {
public:
    LoggedNotifyIcon(NotifyIcon& shown, Log& log) : shown_(shown), log_(log) {}

    void add(std::string_view tip) override {
        note(tip);
        shown_.add(tip);
    }
    void modify(std::string_view tip) override {
        note(tip);
        shown_.modify(tip);
    }
    void remove() override { shown_.remove(); }
    void notify(std::string_view text, LogLevel level) override {
        log_.write(level, text);
        shown_.notify(text, level);
    }

private:
    void note(std::string_view tip) {
        if (tip == tip_) return;
        tip_ = tip;
        log_.write(LogLevel::kInformation, trimBlanks(tip));
    }

    NotifyIcon& shown_;
    Log& log_;
    std::string tip_;
};

}  // namespace kalvo
