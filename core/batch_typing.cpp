#include "core/batch_typing.h"

#include <algorithm>

#include "keys/script_tokens.h"
#include "platform/event_pump.h"
#include "text/ansi_text.h"

namespace kalvo {

std::string_view reasonOf(TypingStop stop) {
    switch (stop) {
        case TypingStop::kNone: break;
        case TypingStop::kStopKey: return "arrêtée au clavier (touche Échap)"_ansi;
        case TypingStop::kUserStop: return "arrêtée par l'utilisateur"_ansi;
        case TypingStop::kOtherApplication:
            return "une autre application est passée au premier plan"_ansi;
        case TypingStop::kTargetGone: return "la fenêtre cible a été fermée"_ansi;
        case TypingStop::kNoTarget: return "aucune application n'est au premier plan"_ansi;
        case TypingStop::kKeyboardLost: return "pas d'affichage"_ansi;
        case TypingStop::kLeaveAwaited: return "le bureau attend votre accord pour la saisie"_ansi;
        case TypingStop::kLeaveRefused: return "le bureau n'a pas autorisé la saisie"_ansi;
        case TypingStop::kLeaveWithdrawn: return "le bureau a retiré l'autorisation de saisir"_ansi;
        case TypingStop::kSessionLocked: return "la session est verrouillée ou déconnectée"_ansi;
        case TypingStop::kKeysRefused: return "le système a refusé des touches"_ansi;
        case TypingStop::kTargetRefuses:
            return "la fenêtre active est celle d'un programme exécuté en tant qu'administrateur, qui refuse la saisie"_ansi;
        case TypingStop::kProgramEnds: return "le programme a été arrêté"_ansi;
    }
    return {};
}

std::string_view keyboardProblem(KeyboardInput& keyboard) {
    const TypingStop obstacle = keyboard.obstacle();
    return reasonOf(obstacle == TypingStop::kNone ? TypingStop::kKeyboardLost : obstacle);
}

void BatchTyping::goTo(std::int32_t pass) {
    const auto index = static_cast<std::size_t>(std::max(pass, 1)) - 1;
    if (index == 0)
        place_ = 0;
    else
        place_ = index < passStarts_.size() ? passStarts_[index] : script_.size();
    lead_.clear();
}

// A replay types nothing behind its last pause, and nothing of a script that has neither a
// pause nor a lock-key token. What is left of one that has begun is typed in full.
void BatchTyping::goOnAsReceived() {
    if (source_ == ScriptSource::kReceived) return;
    source_ = ScriptSource::kReceived;
    const std::size_t lastTimer = script_.rfind(kTimerToken);
    if (lastTimer != std::string::npos) script_.resize(lastTimer + kTimerToken.size());
}

std::int32_t BatchTyping::passAt(std::size_t place) const {
    const auto begun =
        std::upper_bound(passStarts_.begin(), passStarts_.end(), place) - passStarts_.begin();
    return static_cast<std::int32_t>(std::max<std::ptrdiff_t>(begun, 1));
}

TypingStop BatchTyping::run(const Platform& platform, BatchJournal* journal, BatchReport& report) {
    const std::string script = lead_ + script_.substr(place_);
    // From a place in what is typed now to one in the whole script.
    const auto placeOf = [lead = lead_.size(), begin = place_](std::size_t typed) {
        return begin + (typed > lead ? typed - lead : 0);
    };
    report.batch = batch_;
    report.passes = passes();
    report.passesDone = passAt(place_) - 1;
    if (journal != nullptr) journal->typing(batch_, passes(), report.passesDone);
    TypingNews news;
    news.progress = [&](std::size_t typed) {
        if (journal != nullptr) journal->typing(batch_, passes(), passAt(placeOf(typed)) - 1);
    };
    news.disturbed = [&](std::size_t typed) {
        const std::int32_t pass = passAt(std::max<std::size_t>(placeOf(typed), 1) - 1);
        if (report.touched.empty() || report.touched.back() != pass) report.touched.push_back(pass);
    };
    const Typing typing = typeScript(platform, script, timerPause_, source_, news);
    report.untyped = typing.untyped;
    if (typing.stop == TypingStop::kNone) {
        report.outcome = BatchReport::Outcome::kTyped;
        report.target = platform.keyboard.target();
        report.passesDone = passes();
        if (journal != nullptr) journal->typed(batch_, passes(), remarksText(report));
        return typing.stop;
    }
    report.outcome = BatchReport::Outcome::kInterrupted;
    report.passesDone = passAt(placeOf(typing.typed)) - 1;
    report.reason = reasonOf(typing.stop);
    if (journal != nullptr)
        journal->interrupted(batch_, passes(), report.passesDone, report.reason);
    goOnAsReceived();
    // A stop within the lead types it anew: its beginning cannot be told from its end.
    if (typing.resumeAt >= lead_.size()) {
        place_ = placeOf(typing.resumeAt);
        lead_ = typing.lead;
    }
    if (typing.stop == TypingStop::kProgramEnds) throw ProgramEnd{};
    return typing.stop;
}

}  // namespace kalvo
