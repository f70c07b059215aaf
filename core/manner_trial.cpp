#include "core/manner_trial.h"

#include <array>
#include <cstddef>
#include <span>

#include "core/batch_typing.h"
#include "core/script_typing.h"
#include "platform/event_pump.h"
#include "platform/keyboard_input.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

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
constexpr std::string_view kBeginning = "Essai ";

// One line: Enter and Tab may mean anything to an application.
std::string textOfTrial(std::size_t trial) {
    std::string text = std::string(kBeginning) + std::to_string(trial + 1);
    for (int i = 0; i < kSamples; ++i) text.append(kSample);
    return text;
}

// Puts the text in the place of what is in the field, and on the clipboard.
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

// Waits for the text; what is there instead counts when it does not come.
std::string readBack(const Platform& platform, std::string_view text) {
    std::string arrived;
    for (int waited = 0; waited < kTimeToReadBack && arrived != text; waited += kReadInterval) {
        platform.events.Sleep(kReadInterval);
        // The clipboard may still be a window's of ours.
        platform.events.answerUser();
        arrived = platform.keyboard.clipboardText().value_or("");
        arrived.erase(arrived.find_last_not_of("\r\n") + 1);
    }
    return arrived;
}

}  // namespace

MannerTrial tryManners(const Platform& platform) {
    MannerTrial trial;
    for (std::size_t i = 0; i < kManners.size(); ++i) {
        const std::string text = textOfTrial(i);
        trial.manner = kManners[i];
        platform.keyboard.useManners([&trial](std::span<const std::string> names) {
            trial.application = names.empty() ? std::string() : names.front();
            return trial.manner;
        });
        trial.stop = typeScript(platform, scriptOf(text), 0).stop;
        trial.outcome = TrialOutcome::kStopped;
        if (trial.stop != TypingStop::kNone) break;
        const std::string arrived = readBack(platform, text);
        trial.outcome = TrialOutcome::kExact;
        if (arrived == text) break;
        trial.outcome = TrialOutcome::kUnreadable;
        if (arrived.find(kBeginning) == std::string::npos) break;
        trial.outcome = TrialOutcome::kNoneExact;
    }
    platform.keyboard.useManners({});
    return trial;
}

std::string verdictOf(const MannerTrial& trial) {
    switch (trial.outcome) {
        case TrialOutcome::kExact: {
            std::string text;
            if (trial.application.empty())
                text.append("Cette application"_ansi);
            else
                text.append("« "_ansi).append(trial.application).append(" »"_ansi);
            return text.append(wantsEntry(trial) ? " : exact avec une entrée."_ansi
                                                 : " : exact sans réglage, rien à ajouter."_ansi);
        }
        case TrialOutcome::kStopped:
            return std::string("Essai interrompu : "_ansi) + std::string(reasonOf(trial.stop));
        case TrialOutcome::kUnreadable:
            return std::string(
                "Rien ne peut être relu par le presse-papiers : comparez vous-même."_ansi);
        case TrialOutcome::kNoneExact: break;
    }
    return std::string("Aucun réglage ne donne un texte exact."_ansi);
}

}  // namespace kalvo
