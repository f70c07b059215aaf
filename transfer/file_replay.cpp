#include "transfer/file_replay.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "core/batch_typing.h"
#include "core/frame_dispatch.h"
#include "core/script_typing.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/log.h"
#include "platform/notify_icon.h"
#include "platform/progress.h"
#include "scenario/file_output.h"
#include "scenario/frame_processing.h"
#include "scenario/progress_pacer.h"
#include "settings/application_paths.h"
#include "settings/options.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/line_splitter.h"
#include "transfer/file_choice.h"

namespace kalvo {

namespace {

// A line of the file as a record of a frame: each field ended by CR, the record by LF.
void appendRecord(std::string& frame, std::string_view line, std::string_view separator) {
    const std::size_t start = frame.size();
    for (std::size_t at = line.find(separator); at != std::string_view::npos;
         at = line.find(separator)) {
        frame.append(line.substr(0, at)).push_back('\r');
        line.remove_prefix(at + separator.size());
    }
    frame.append(line);
    if (frame.size() == start || frame.back() != '\r') frame.push_back('\r');
    frame.push_back('\n');
}

// The whole file as one frame.
std::string readFrame(const Platform& platform, std::string_view file, std::string_view separator) {
    const auto size = static_cast<double>(std::max<std::uint64_t>(platform.files.size(file), 1));
    std::string frame;
    ProgressPacer pacer(platform.events);
    platform.files.readLines(file, [&](std::string_view line) {
        if (pacer.due()) {
            platform.progress.setValue(100 * static_cast<double>(frame.size()) / size);
            platform.events.DoEvents();
        }
        appendRecord(frame, line, separator);
    });
    return frame;
}

// Takes the progress window away, whatever happens.
class ProgressShown {
public:
    explicit ProgressShown(Progress& progress) : progress_(progress) {
        progress_.setLabel("");
        progress_.show();
    }
    ProgressShown(const ProgressShown&) = delete;
    ProgressShown& operator=(const ProgressShown&) = delete;
    ~ProgressShown() { progress_.unload(); }

private:
    Progress& progress_;
};

BatchReport replayFrame(const Platform& platform, ScenarioRun& run, std::string frame) {
    BatchReport report;
    report.replayed = true;
    const std::uint32_t start = platform.events.GetTickCount();
    std::string script;
    {
        const ProgressShown shown(platform.progress);
        report.characters = frame.size();
        SplitFrameFields(platform, run, frame);
        script = BuildKeyScript(platform, run, frame);
    }
    report.passes = static_cast<std::int32_t>(run.passStarts.size());
    platform.events.DoEvents();
    platform.events.Sleep(kPauseBeforeTyping);
    if (run.active.FileMode) {
        const FileOutput output = WriteFileLine(platform, run, script);
        report.outcome =
            output.written ? BatchReport::Outcome::kWritten : BatchReport::Outcome::kFailed;
        report.target = output.path;
        report.reason = output.problem;
    } else {
        const bool whole =
            optionSet(platform.profiles, run.applicationFolder, Option::kWholeReplay);
        const ScriptSource source = whole ? ScriptSource::kReceived : ScriptSource::kReplayed;
        auto typing =
            std::make_shared<BatchTyping>(0, script, run.passStarts, run.TimerPause, source);
        report.stop = typing->run(platform, nullptr, report);
        if (report.stop != TypingStop::kNone) {
            report.rest = std::move(typing);
        } else if (!typesAnything(script, source)) {
            report.outcome = BatchReport::Outcome::kNothing;
            report.passesDone = 0;
            report.reason =
                script.empty()
                    ? "le scénario n'en tire aucune touche"_ansi
                    : "sans {TIMER} ni verrouillage, un rejeu ne saisit rien (option RejeuComplet)"_ansi;
        }
    }
    if (run.active.FileMode) report.passesDone = report.whole() ? report.passes : 0;
    report.milliseconds = platform.events.GetTickCount() - start;
    logReport(platform.log, report);
    return report;
}

}  // namespace

std::optional<BatchReport> ReplayFile(const Platform& platform, ScenarioRun& run,
                                      std::string_view file, std::string_view separator) {
    if (!platform.files.fileExists(file)) {
        platform.dialogs.message("Le fichier n'existe pas", kApplicationTitle, MessageIcon::kNone);
        return std::nullopt;
    }
    platform.log.write(LogLevel::kInformation, std::string("Rejeu de ").append(file));
    std::string frame;
    {
        const ProgressShown shown(platform.progress);
        frame = readFrame(platform, file, separator);
    }
    BatchReport report = replayFrame(platform, run, std::move(frame));
    if (deservesNotice(platform, run.applicationFolder, report))
        platform.icon.notify(shortText(report), levelOf(report));
    return report;
}

BatchReport ReplayText(const Platform& platform, ScenarioRun& run, std::string_view text,
                       std::string_view separator) {
    std::string frame;
    visitLines(text, [&](std::string_view line) { appendRecord(frame, line, separator); });
    return replayFrame(platform, run, std::move(frame));
}

std::string ReplayForm::getFile() const {
    return platform_.dialogs.openFile(startFolder(), kFileFilter);
}

bool ReplayForm::complete(std::string_view file, std::string_view separator) const {
    if (!file.empty() && !separator.empty()) return true;
    const std::string_view missing =
        file.empty() ? "Veuillez sélectionner un fichier à remonter"_ansi
                     : "Veuillez sélectionner un séparateur pour les champs"_ansi;
    platform_.dialogs.message(missing, "KALVO Horizon", MessageIcon::kExclamation);
    return false;
}

void ReplayForm::start(std::string_view file, std::string_view separator) {
    platform_.events.DoEvents();
    turn_([&] { return ReplayFile(platform_, run_, file, separator); });
}

std::string ReplayForm::startFolder() const {
    std::string folder =
        readPortSerie(platform_.profiles, run_.applicationFolder, port_serie::kReplayFolder);
    if (!folder.empty()) return folder;
    return temporaryFolder(run_.applicationFolder);
}

}  // namespace kalvo
