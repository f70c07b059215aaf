#include "app/console_user_interface.h"

#include <iostream>
#include <string>

#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

std::string onOneLine(std::string_view text) {
    std::string line;
    bool pendingBreak = false;
    for (const char c : text) {
        if (c == '\r' || c == '\n') {
            pendingBreak = !line.empty();
            continue;
        }
        if (pendingBreak) line += " | ";
        pendingBreak = false;
        line.push_back(c);
    }
    return line;
}

std::string readLine() {
    std::string line;
    std::getline(std::cin, line);
    return fromUtf8(line);
}

}  // namespace

void writeErrorLine(std::string_view text) { std::cerr << toUtf8(onOneLine(text)) << std::endl; }

void ConsoleDialogs::message(std::string_view text, std::string_view title, MessageIcon) {
    writeErrorLine(std::string(title) + " : " + std::string(text));
}

bool ConsoleDialogs::confirm(std::string_view text, std::string_view title, MessageIcon icon) {
    message(std::string(text) + " (oui/non)", title, icon);
    return equalIgnoringCase(readLine(), "oui");
}

std::optional<std::string> ConsoleDialogs::inputBox(std::string_view prompt, std::string_view title,
                                                    std::string_view defaultText) {
    message(prompt, title, MessageIcon::kNone);
    std::string answer = readLine();
    return answer.empty() ? std::string(defaultText) : answer;
}

std::string ConsoleDialogs::openFile(std::string_view startFolder, std::string_view) {
    message("Chemin du fichier (dossier " + std::string(startFolder) + ")", kApplicationTitle,
            MessageIcon::kNone);
    return readLine();
}

void ConsoleNotifyIcon::add(std::string_view tip) { modify(tip); }

void ConsoleNotifyIcon::modify(std::string_view tip) {
    if (tip == shown_) return;
    shown_ = tip;
    writeErrorLine(trimBlanks(tip));
}

}  // namespace kalvo
