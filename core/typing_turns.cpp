#include "core/typing_turns.h"

#include <cstdint>
#include <utility>

#include "core/during.h"
#include "core/frame_dispatch.h"
#include "platform/event_pump.h"
#include "platform/keyboard_input.h"
#include "platform/progress.h"
#include "text/ansi_text.h"

namespace kalvo {

TypingTurns::TypingTurns(const Platform& platform, RunTimeState& state, BatchJournal& journal,
                         Desktop desktop)
    : platform_(platform), state_(state), journal_(journal), desktop_(std::move(desktop)) {}

void TypingTurns::dispatch() {
    last_ = {state_.batch, state_.ReceivedData};
    const bool intoFile = state_.scenario.active.FileMode;
    std::string_view reason;
    if (busy_)
        reason = "un autre lot est en cours de saisie"_ansi;
    else if (suspended() && !intoFile)
        reason = "une saisie est suspendue"_ansi;
    else if (!intoFile && platform_.keyboard.connected())
        reason = reasonOf(targetProblem());
    if (!reason.empty()) {
        platform_.progress.unload();
        wait({std::exchange(state_.batch, BatchJournal::kNone), state_.ReceivedData}, reason);
        return;
    }
    BatchReport report;
    {
        const During typing([this](bool on) { setBusy(on); });
        report = TraiteEmul(platform_, state_, journal_);
    }
    finish(report);
}

void TypingTurns::setBusy(bool on) {
    busy_ = on;
    desktop_.typing(on);
}

TypingStop TypingTurns::targetProblem() {
    if (!desktop_.targetReady()) return TypingStop::kNoTarget;
    const bool refuses = platform_.keyboard.obstacle() == TypingStop::kTargetRefuses;
    return refuses ? TypingStop::kTargetRefuses : TypingStop::kNone;
}

void TypingTurns::wait(Batch batch, std::string_view reason) {
    journal_.waiting(batch.id, std::string("en attente : "_ansi) + std::string(reason));
    warn(std::string("Lot en attente : "_ansi) + std::string(reason));
    waiting_.push_back(std::move(batch));
}

void TypingTurns::tick() {
    if (busy_) return;
    if (suspended()) {
        if (suspended_.stop == TypingStop::kOtherApplication && platform_.watch.targetInFront())
            goOn();
        return;
    }
    if (waiting_.empty() || !canDispatch(platform_, state_) || targetProblem() != TypingStop::kNone)
        return;
    Batch next = std::move(waiting_.front());
    waiting_.pop_front();
    type(std::move(next));
}

void TypingTurns::type(Batch batch) {
    BatchReport report;
    {
        const During typing([this](bool on) { setBusy(on); });
        JournalEntry entry;
        entry.id = batch.id;
        report = dispatchAgain(platform_, state_, journal_, entry, std::move(batch.bytes),
                               batch.fromPass);
    }
    finish(report);
}

void TypingTurns::finish(const BatchReport& report) {
    if (report.rest)
        suspend(report);
    else
        suspended_ = {};
    desktop_.done(report);
}

void TypingTurns::suspend(const BatchReport& report) {
    suspended_ = report;
    desktop_.showSuspended(suspensionText(report));
}

void TypingTurns::resume() {
    if (suspended() && mayGoOn()) goOn();
}

bool TypingTurns::mayGoOn() {
    if (canDispatch(platform_, state_)) return desktop_.targetReady();
    platform_.keyboard.requestLeave();
    warn(std::string("Saisie impossible : "_ansi).append(keyboardProblem(platform_.keyboard)));
    return false;
}

void TypingTurns::restartRecord() {
    if (!suspended() || !mayGoOn()) return;
    suspended_.rest->goTo(suspended_.passesDone + 1);
    goOn();
}

void TypingTurns::goOn() {
    if (busy_) return;
    desktop_.hideSuspended();
    BatchReport report = std::exchange(suspended_, {});
    const auto typing = std::exchange(report.rest, nullptr);
    const bool other = std::exchange(suspendedOther_, false);
    {
        const During going([this](bool on) { setBusy(on); });
        const std::uint32_t start = platform_.events.GetTickCount();
        report.stop = typing->run(platform_, &journal_, report);
        report.milliseconds += platform_.events.GetTickCount() - start;
    }
    if (report.stop != TypingStop::kNone) report.rest = typing;
    logReport(platform_.log, report);
    if (!other) {
        finish(report);
    } else if (report.rest) {
        suspend(report);
        suspendedOther_ = true;
    } else {
        desktop_.say(shortText(report), levelOf(report));
    }
}

void TypingTurns::abandon() {
    if (!suspended()) return;
    desktop_.hideSuspended();
    suspended_ = {};
    suspendedOther_ = false;
}

void TypingTurns::typeOther(const std::function<std::optional<BatchReport>()>& type) {
    if (busy_ || (suspended() && !state_.scenario.active.FileMode)) {
        warn("Pas maintenant : une autre saisie est en cours ou suspendue."_ansi);
        return;
    }
    std::optional<BatchReport> report;
    {
        const During typing([this](bool on) { setBusy(on); });
        report = type();
    }
    if (!report || !report->rest) return;
    suspend(*report);
    suspendedOther_ = true;
}

void TypingTurns::retypeLast() {
    if (busy_ || suspended()) return;
    if (last_.bytes.empty()) {
        warn("Aucun lot n'a été reçu depuis le démarrage."_ansi);
        return;
    }
    start(last_);
}

void TypingTurns::retype(std::int64_t id, std::string bytes, std::int32_t fromPass) {
    if (busy_ || suspended()) {
        warn(busy_ ? "Un lot est en cours de saisie : retapez ensuite."_ansi
                   : "Une saisie est suspendue : reprenez-la ou abandonnez-la d'abord."_ansi);
        return;
    }
    // It may be one that waits.
    std::erase_if(waiting_, [id](const Batch& batch) { return batch.id == id; });
    start({id, std::move(bytes), fromPass});
}

// Whoever refused is asked again: now it is he who wants something typed.
void TypingTurns::start(Batch batch) {
    if (!canDispatch(platform_, state_)) {
        platform_.keyboard.requestLeave();
        wait(std::move(batch), keyboardProblem(platform_.keyboard));
        return;
    }
    const bool intoFile = state_.scenario.active.FileMode;
    const TypingStop problem = intoFile ? TypingStop::kNone : targetProblem();
    if (problem == TypingStop::kNone)
        type(std::move(batch));
    else
        wait(std::move(batch), reasonOf(problem));
}

}  // namespace kalvo
