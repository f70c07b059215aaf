#include "core/frame_dispatch.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "core/batch_typing.h"
#include "core/reception/serial_reception.h"
#include "platform/event_pump.h"
#include "platform/keyboard_input.h"
#include "platform/log.h"
#include "platform/progress.h"
#include "platform/serial_port.h"
#include "scenario/file_output.h"
#include "scenario/frame_processing.h"
#include "settings/options.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

// One batch on its way through the scenario in force.
class Dispatch {
public:
    Dispatch(const Platform& platform, RunTimeState& state, BatchJournal& journal,
             std::int64_t batch, std::string data)
        : platform_(platform),
          scenario_(state.scenario),
          journal_(journal),
          start_(platform.events.GetTickCount()),
          data_(std::move(data)) {
        report_.batch = batch;
        report_.characters = data_.size();
    }

    BatchReport run(std::int32_t fromPass, std::int32_t doneBefore) {
        SplitFrameFields(platform_, scenario_, data_);
        std::string script = BuildKeyScript(platform_, scenario_, data_);
        report_.passes = static_cast<std::int32_t>(scenario_.passStarts.size());
        platform_.progress.unload();
        platform_.events.DoEvents();
        platform_.events.Sleep(kPauseBeforeTyping);
        if (scenario_.active.FileMode)
            write(script);
        else
            type(std::move(script), fromPass, doneBefore);
        return told();
    }

private:
    const BatchReport& told() {
        report_.milliseconds = platform_.events.GetTickCount() - start_;
        logReport(platform_.log, report_);
        return report_;
    }

    void write(const std::string& script) {
        const bool built =
            optionSet(platform_.profiles, scenario_.applicationFolder, Option::kBuiltText);
        const FileOutput output = WriteFileLine(platform_, scenario_, built ? script : data_);
        report_.target = output.path;
        report_.reason = output.problem;
        if (!output.written) {
            report_.outcome = BatchReport::Outcome::kFailed;
            journal_.failed(report_.batch, report_.reason);
            return;
        }
        report_.outcome = BatchReport::Outcome::kWritten;
        report_.passesDone = report_.passes;
        journal_.written(report_.batch, report_.passes);
    }

    void type(std::string script, std::int32_t fromPass, std::int32_t doneBefore) {
        // One that was broken off behind its last record is finished.
        if (fromPass > std::max(report_.passes, 1) && fromPass != doneBefore + 1) {
            report_.outcome = BatchReport::Outcome::kNothing;
            report_.reason =
                std::string("il n'a pas d'enregistrement "_ansi) + std::to_string(fromPass);
            return;
        }
        const bool nothing = script.empty();
        auto typing = std::make_shared<BatchTyping>(report_.batch, std::move(script),
                                                    scenario_.passStarts, scenario_.TimerPause);
        typing->goTo(fromPass);
        try {
            report_.stop = typing->run(platform_, &journal_, report_);
        } catch (const ProgramEnd&) {
            told();
            throw;
        }
        if (report_.stop != TypingStop::kNone)
            report_.rest = std::move(typing);
        else if (nothing)
            tellNothing();
    }

    // An empty script is typed as any other, but nobody must be told that it went anywhere.
    void tellNothing() {
        report_.outcome = BatchReport::Outcome::kNothing;
        report_.reason =
            data_.empty() ? "rien n'a été reçu"_ansi : "le scénario n'en tire aucune touche"_ansi;
        if (!data_.empty()) journal_.failed(report_.batch, report_.reason);
    }

    const Platform& platform_;
    ScenarioRun& scenario_;
    BatchJournal& journal_;
    std::uint32_t start_;
    std::string data_;
    BatchReport report_;
};

void logArrival(const Platform& platform, const RunTimeState& state) {
    const std::string number =
        state.batch == BatchJournal::kNone ? std::string() : std::to_string(state.batch) + " ";
    platform.log.write(
        LogLevel::kInformation,
        "Lot " + number + std::string("reçu de "_ansi) + state.TerminalType +
            ", enregistrements : " + std::to_string(countRecords(state.ReceivedData)) +
            std::string(", caractères : "_ansi) + std::to_string(state.ReceivedData.size()));
}

BatchReport keepForLater(const Platform& platform, BatchJournal& journal, std::int64_t batch,
                         std::size_t characters) {
    BatchReport report;
    report.outcome = BatchReport::Outcome::kFailed;
    report.batch = batch;
    report.characters = characters;
    report.reason = keyboardProblem(platform.keyboard);
    journal.failed(batch, report.reason);
    logReport(platform.log, report);
    return report;
}

void resetPort(SerialPort& port) {
    if (!port.PortOpen()) return;
    port.setPortOpen(false);
    port.reopen();
}

}  // namespace

bool canDispatch(const Platform& platform, const RunTimeState& state) {
    return state.scenario.active.FileMode || platform.keyboard.connected();
}

BatchReport TraiteEmul(const Platform& platform, RunTimeState& state, BatchJournal& journal) {
    logArrival(platform, state);
    const std::int64_t batch = std::exchange(state.batch, BatchJournal::kNone);
    if (!canDispatch(platform, state)) {
        platform.progress.unload();
        return keepForLater(platform, journal, batch, state.ReceivedData.size());
    }
    BatchReport report = Dispatch(platform, state, journal, batch, state.ReceivedData).run(1, 0);
    resetPort(platform.port);
    return report;
}

BatchReport dispatchAgain(const Platform& platform, RunTimeState& state, BatchJournal& journal,
                          const JournalEntry& entry, std::string bytes, std::int32_t fromPass) {
    if (!canDispatch(platform, state))
        return keepForLater(platform, journal, entry.id, bytes.size());
    return Dispatch(platform, state, journal, entry.id, std::move(bytes))
        .run(fromPass, entry.passesDone);
}

bool deservesNotice(const Platform& platform, std::string_view applicationFolder,
                    const BatchReport& report) {
    if (report.rest) return false;
    return !report.whole() ||
           optionSet(platform.profiles, applicationFolder, Option::kNotifications);
}

Aftermath aftermathOf(const Platform& platform, const RunTimeState& state,
                      const BatchReport& report) {
    const std::string& folder = state.scenario.applicationFolder;
    // What went nowhere must stay where it is.
    const bool mayForget =
        report.whole() || !optionSet(platform.profiles, folder, Option::kEraseAfterSuccess);
    return {.notice = deservesNotice(platform, folder, report),
            .eraseQuestion = mayForget && pushesBatches(state.TerminalType)};
}

}  // namespace kalvo
