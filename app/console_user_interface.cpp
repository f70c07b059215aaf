#include "app/console_user_interface.h"

#include <iostream>
#include <string>

#include "app/logged_user_interface.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/one_line.h"

namespace kalvo {

namespace {

std::string readLine() {
    std::string line;
    std::getline(std::cin, line);
    return fromUtf8(line);
}

}  // namespace

void writeErrorLine(std::string_view text) { std::cerr << toUtf8(onOneLine(text)) << std::endl; }

void ConsoleLog::write(LogLevel, std::string_view text) noexcept {
    try {
        writeErrorLine(text);
    } catch (...) {
        // A log never fails.
    }
}

void ConsoleDialogs::message(std::string_view text, std::string_view title, MessageIcon icon) {
    said_.write(levelOf(icon), std::string(title) + " : " + std::string(text));
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

std::string ConsoleDialogs::saveFile(std::string_view name, std::string_view) {
    message(std::string("Chemin du fichier à écrire ("_ansi) + std::string(name) + ")",
            kApplicationTitle, MessageIcon::kNone);
    return readLine();
}

void ConsoleNotifyIcon::add(std::string_view tip) { modify(tip); }

void ConsoleNotifyIcon::modify(std::string_view tip) {
    if (tip == shown_) return;
    shown_ = tip;
    said_.write(LogLevel::kInformation, trimBlanks(tip));
}

}  // namespace kalvo
