#include "app/commands/type_trial.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "app/commands/command_line.h"
#include "app/console_user_interface.h"
#include "core/batch_typing.h"
#include "core/script_typing.h"
#include "platform/keyboard_input.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr int kTimeToChoose = 5000;    // milliseconds, to bring the window to the front
constexpr int kTimeToReadBack = 5000;  // milliseconds, at most
constexpr int kReadInterval = 100;     // milliseconds

// The gentlest manner that does is the first that does.
constexpr auto kManners = std::to_array<TypingManner>({
    {},
    {.keyPause = 2},
    {.keyPause = 5},
    {.method = TypingMethod::kKeypad, .keyPause = 5},
    {.method = TypingMethod::kClipboard},
    {.keyPause = 20},
});

// Doubled letters, signs of every level, capitals and characters that layouts lack.
constexpr std::string_view kSample =
    " 0011223 AAaa Bb ;:!?.,/*-+ (){}[]<>@#$%&~^\\|_=\"' « éÉèàçùôï ß Ø ñ » œ Œ € — ‰"_ansi;
constexpr int kSamples = 4;

// One line: Enter and Tab may mean anything to an application.
std::string textOf(std::size_t trial) {
    std::string text = "Essai " + std::to_string(trial + 1);
    for (int i = 0; i < kSamples; ++i) text.append(kSample);
    return text;
}

std::string scriptOf(std::string_view text) {
    std::string script;
    for (const char character : text) {
        if (std::string_view("+^%(){}~").find(character) == std::string_view::npos)
            script += character;
        else
            (script += '{').append(1, character) += '}';
    }
    return "^a" + script + "^a^c";
}

std::string entryOf(std::string_view name, const TypingManner& manner) {
    std::string entry = "[" + std::string(name) + "]\n";
    if (manner.method == TypingMethod::kKeypad) entry += "Methode=pave\n";
    if (manner.method == TypingMethod::kClipboard) entry += "Methode=presse-papiers\n";
    if (manner.keyPause > 0) entry += "PauseTouche=" + std::to_string(manner.keyPause) + "\n";
    return entry;
}

class TypeTrial {
public:
    explicit TypeTrial(CommandContext& context) : context_(context) {}

    int run() {
        writeErrorLine(
            "Mettez le curseur dans un champ de texte vide : l'essai commence dans 5 s."_ansi);
        context_.events.Sleep(kTimeToChoose);
        for (std::size_t trial = 0; trial < kManners.size(); ++trial) {
            const std::string text = textOf(trial);
            const TypingStop stop = type(text, kManners[trial]);
            if (stop != TypingStop::kNone) return failure(reasonOf(stop));
            const std::string arrived = readBack(text);
            if (arrived == text) return propose(trial);
            if (arrived.find("Essai") == std::string::npos)
                return failure(
                    "Rien ne peut être relu par le presse-papiers : comparez vous-même."_ansi);
        }
        return failure("Aucun réglage ne donne un texte exact."_ansi);
    }

private:
    TypingStop type(std::string_view text, const TypingManner& manner) {
        const Platform platform = context_.platform();
        platform.keyboard.useManners([this, manner](std::span<const std::string> names) {
            name_ = names.empty() ? std::string("*") : names.front();
            return manner;
        });
        return typeScript(platform, scriptOf(text), 0).stop;
    }

    // Waits for the text; what is there instead counts when it does not come.
    std::string readBack(std::string_view text) {
        std::string arrived;
        for (int waited = 0; waited < kTimeToReadBack && arrived != text; waited += kReadInterval) {
            context_.events.Sleep(kReadInterval);
            arrived = context_.platform().keyboard.clipboardText().value_or("");
            arrived.erase(arrived.find_last_not_of("\r\n") + 1);
        }
        return arrived;
    }

    int propose(std::size_t trial) {
        if (trial == 0) {
            writeErrorLine(std::string("« "_ansi) + name_ +
                           std::string(" » : exact sans réglage, rien à ajouter."_ansi));
            return kExitSuccess;
        }
        writeErrorLine("Exact avec ces lignes, à ajouter à Applications.ini :"_ansi);
        writeOutput(toUtf8(entryOf(name_, kManners[trial])));
        return kExitSuccess;
    }

    static int failure(std::string_view reason) {
        writeErrorLine(reason);
        return kExitFailure;
    }

    CommandContext& context_;
    std::string name_;
};

}  // namespace

int runTypeTrial(CommandContext& context) { return TypeTrial(context).run(); }

}  // namespace kalvo
