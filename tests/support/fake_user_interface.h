// Message boxes, tray icon and progress window that write down what they show.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/log.h"
#include "platform/notify_icon.h"
#include "platform/progress.h"

namespace kalvo::testing {

class FakeDialogs : public Dialogs {
public:
    struct Shown {
        std::string text;
        std::string title;
        MessageIcon icon;
    };
    std::vector<Shown> shown;
    // Answers to the questions to come.
    std::deque<bool> confirmations;
    std::deque<std::optional<std::string>> inputs;  // nothing: cancelled
    std::string lastDefault;
    std::string chosenFile;
    std::string startFolder;
    int beeps = 0;

    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const Shown& message : shown) all.push_back(message.text);
        return all;
    }

    void message(std::string_view text, std::string_view title, MessageIcon icon) override {
        shown.push_back({std::string(text), std::string(title), icon});
    }
    bool confirm(std::string_view text, std::string_view title, MessageIcon icon) override {
        message(text, title, icon);
        return take(confirmations, false);
    }
    std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                        std::string_view defaultText) override {
        message(prompt, title, MessageIcon::kNone);
        lastDefault = defaultText;
        return take(inputs, std::optional<std::string>(""));
    }
    std::string openFile(std::string_view folder, std::string_view) override {
        startFolder = folder;
        return chosenFile;
    }
    std::string saveFile(std::string_view name, std::string_view) override {
        lastDefault = name;
        return chosenFile;
    }
    void beep() override { ++beeps; }

private:
    template <typename T>
    static T take(std::deque<T>& answers, T otherwise) {
        if (answers.empty()) return otherwise;
        T answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class FakeNotifyIcon : public NotifyIcon {
public:
    // "add", "modify" or "delete", and the tip without its padding.
    std::vector<std::string> log;
    std::string lastTip;

    void add(std::string_view tip) override { note("add ", tip); }
    void modify(std::string_view tip) override { note("modify ", tip); }
    void remove() override { log.emplace_back("delete"); }
    std::vector<std::string> notices;
    void notify(std::string_view text, LogLevel) override { notices.emplace_back(text); }

private:
    void note(const char* what, std::string_view tip) {
        lastTip = tip;
        log.push_back(what + lastTip.substr(0, lastTip.find_last_not_of(' ') + 1));
    }
};

class FakeLog : public Log {
public:
    std::vector<std::string> lines;
    void write(LogLevel, std::string_view text) noexcept override { lines.emplace_back(text); }
};

class FakeProgress : public Progress {
public:
    std::vector<std::string> labels;
    std::vector<double> values;
    bool visible = false;

    void setLabel(std::string_view text) override { labels.emplace_back(text); }
    void setValue(double percent) override { values.push_back(percent); }
    void show() override { visible = true; }
    void refresh() override {}
    void unload() override { visible = false; }
};

}  // namespace kalvo::testing
