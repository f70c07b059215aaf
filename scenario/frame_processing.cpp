#include "scenario/frame_processing.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>

#include "platform/database.h"
#include "platform/event_pump.h"
#include "platform/notify_icon.h"
#include "platform/progress.h"
#include "scenario/action_steps.h"
#include "scenario/partial_frames.h"
#include "scenario/progress_pacer.h"
#include "scenario/scenario_file.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "settings/options.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

std::string readScenarioFile(const Platform& platform, const ScenarioRun& run,
                             const scenario_file::Entry& entry) {
    return ReadIniValue(
        platform.profiles,
        findScenarioFile(platform.files, run.applicationFolder, run.active.ScenarioName),
        entry.section, entry.key);
}

double share(std::size_t part, std::size_t whole) {
    return static_cast<double>(part) / static_cast<double>(whole);
}

// "dd/mm/yy"
std::string shortDate(const LocalTime& date) {
    const auto twoDigits = [](int number) {
        const std::string digits = std::to_string(number % 100);
        return digits.size() < 2 ? "0" + digits : digits;
    };
    return twoDigits(date.day) + "/" + twoDigits(date.month) + "/" + twoDigits(date.year);
}

// `places` move along; one inside a replaced part comes to stand behind it.
std::string replaceAll(std::string_view text, std::string_view what, std::string_view with,
                       std::span<std::uint32_t> places) {
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    // The text up to `end` as it stands, then what replaces the part behind it.
    const auto take = [&](std::size_t end, std::string_view replacement) {
        for (; !places.empty() && places.front() <= end; places = places.subspan(1))
            places.front() = static_cast<std::uint32_t>(
                result.size() + (std::max<std::size_t>(places.front(), start) - start));
        result.append(text.substr(start, end - start)).append(replacement);
        start = end;
    };
    for (std::size_t at = text.find(what); at != std::string_view::npos;
         at = text.find(what, start)) {
        take(at, with);
        start += what.size();
    }
    take(text.size(), {});
    return result;
}

// The passes of a scenario's actions over one frame.
class FramePasses {
public:
    FramePasses(const Platform& platform, ScenarioRun& run, std::string_view frame,
                std::string depart, std::string boucle)
        : platform_(platform),
          run_(run),
          frame_(frame),
          depart_(std::move(depart)),
          boucle_(std::move(boucle)),
          steps_(understandActions(run.active.ActionLines, run.keys)),
          fields_(run.FrameFields),
          startPointActs_(optionSet(platform.profiles, run.applicationFolder, Option::kStartPoint)),
          literalFields_(!run.active.FileMode && optionSet(platform.profiles, run.applicationFolder,
                                                           Option::kLiteralFields)) {}

    // The output; the places where the passes begin in it are added to `starts`.
    std::string run(std::vector<std::uint32_t>& starts) {
        ProgressPacer pacer(platform_.events);
        int passesWithoutAction = 0;
        while (position_ < frame_.size()) {
            if (pacer.due()) showProgress();
            const std::size_t before = position_;
            const std::size_t fieldsBefore = fieldCursor_;
            starts.push_back(static_cast<std::uint32_t>(output_.size()));
            const bool acted = runPass();
            if (!acted) starts.pop_back();
            // The actions may never come to an end of the frame by themselves.
            passesWithoutAction = acted ? 0 : passesWithoutAction + 1;
            if (passesWithoutAction == 2) break;
            if (acted && fieldCursor_ == fieldsBefore && position_ == before) break;
        }
        return std::move(output_);
    }

private:
    // True when at least one action ran.
    bool runPass() {
        actionIndex_ = startIndex();
        const bool acted = actionIndex_ <= lastAction();
        // A loop point before the first action is one at it.
        for (actionIndex_ = std::max(actionIndex_, 0); actionIndex_ <= lastAction(); ++actionIndex_)
            perform(steps_[static_cast<std::size_t>(actionIndex_)]);
        return acted;
    }

    // The loop point counts for passes that follow a whole one, whatever the start
    // point says; since compiled files always have one, the start point only acts
    // in files made by hand.
    [[nodiscard]] std::int32_t startIndex() const {
        std::int32_t start = 1;
        if (!depart_.empty()) resumeNext([&] { start = toInteger16(depart_); });
        const bool wholePass = actionIndex_ - 1 == lastAction();
        if (startPointActs_ && !wholePass) return std::max(start, 1);
        if (!boucle_.empty()) resumeNext([&] { start = wholePass ? toInteger16(boucle_) : 1; });
        return start;
    }

    [[nodiscard]] std::int32_t lastAction() const {
        return static_cast<std::int32_t>(steps_.size()) - 1;
    }

    void perform(const ActionStep& step) {
        if (step.advances) advance();
        switch (step.kind) {
            case ActionStep::Kind::kText: output_ += step.text; break;
            case ActionStep::Kind::kTimer:
                resumeNext([&] { run_.TimerPause = toInteger16(step.text); });
                output_ += "{TIMER}";
                break;
            case ActionStep::Kind::kDate: output_ += shortDate(platform_.events.now()); break;
            case ActionStep::Kind::kCounter: output_ += run_.CounterText; break;
            case ActionStep::Kind::kField: appendField(fields_->at(fieldCursor_++)); break;
        }
        if (step.stepsBack) --position_;
        if (fieldCursor_ == fields_->FieldCount()) position_ = frame_.size();
    }

    void appendField(std::string_view field) {
        if (!literalFields_) {
            output_ += field;
            return;
        }
        for (const char c : field) {
            const bool sign = std::string_view("+^%~(){}").find(c) != std::string_view::npos;
            sign ? output_.append({'{', c, '}'}) : output_.append(1, c);
        }
    }

    // Over one character and the blanks and CRs that follow it. Position p names
    // the p-th character.
    void advance() {
        ++position_;
        while (position_ <= frame_.size() &&
               (frame_[position_ - 1] == ' ' || frame_[position_ - 1] == '\r'))
            ++position_;
    }

    void showProgress() {
        platform_.progress.setValue(40 + 50 * share(position_, frame_.size()));
        platform_.events.DoEvents();
    }

    const Platform& platform_;
    ScenarioRun& run_;
    std::string_view frame_;
    std::string depart_;
    std::string boucle_;
    std::vector<ActionStep> steps_;
    std::shared_ptr<const FrameFieldTable> fields_;
    bool startPointActs_;
    bool literalFields_;
    std::string output_;
    std::size_t position_ = 0;
    std::size_t fieldCursor_ = 0;
    std::int32_t actionIndex_ = 0;
};

}  // namespace

void SplitFrameFields(const Platform& platform, ScenarioRun& run, std::string_view frame) {
    platform.progress.setLabel("");
    platform.progress.setLabel("Vidage des données en cours....."_ansi);
    platform.progress.show();

    const auto fields = std::make_shared<FrameFieldTable>();
    fields->reserve(frame.size());
    ProgressPacer pacer(platform.events);
    for (std::size_t p = 0; p < frame.size(); ++p) {
        fields->add(frame[p]);
        if (!pacer.due()) continue;
        platform.progress.setValue(50 * share(p + 1, frame.size()));
        platform.events.DoEvents();
    }
    run.FrameFields = fields;
}

std::string BuildKeyScript(const Platform& platform, ScenarioRun& run, std::string& frame) {
    platform.progress.setLabel("Traitement des données..."_ansi);
    platform.progress.show();
    std::string boucle = readScenarioFile(platform, run, scenario_file::kBoucle);
    std::string depart = readScenarioFile(platform, run, scenario_file::kDepart);

    if (run.active.PartialMode == 1) {
        std::int16_t count = 0;
        const bool counted = resumeNext([&] {
            count = toInteger16(readScenarioFile(platform, run, scenario_file::kSubFrameCount));
        });
        if (!counted && optionSet(platform.profiles, run.applicationFolder, Option::kPartialFrame))
            resumeNext([&] {
                count = toInteger16(readScenarioFile(platform, run, scenario_file::kCompiledCount));
            });
        frame = reassembleSubFrames(frame, run.active.SubFrameMap, count);
    }
    run.CounterText = NextCounterValue(platform, run);

    std::vector<std::uint32_t> starts;
    std::string output = FramePasses(platform, run, frame, depart, boucle).run(starts);
    std::string script = withDecimalSeparator(std::move(output), run.DecimalSeparator, starts);
    run.passStarts = std::move(starts);
    platform.progress.setValue(100);
    return script;
}

std::string NextCounterValue(const Platform& platform, const ScenarioRun& run) {
    std::string value;
    std::string problem;
    const auto readAndAdvance = [&](Database& database) {
        value = "0";
        std::int16_t counter = 0;
        bool there = true;
        const bool readable = resumeNext([&] {
            const std::optional<std::int16_t> read = readCounter(database);
            there = read.has_value();
            counter = read.value_or(0);
        });
        if (!readable) problem = "Le compteur était illisible : il repart de 0."_ansi;
        if (!there) return;
        value = std::to_string(counter);
        if (run.counterUse == CounterUse::kReadOnly) return;
        // A counter that has reached the end of its 16 bits stays there.
        if (counter < std::numeric_limits<std::int16_t>::max())
            writeCounter(database, counter + 1);
        else
            problem = "Le compteur est arrivé à 32767 : il n'avance plus."_ansi;
    };
    try {
        const auto database =
            platform.databases.OpenDatabase(scenarioDatabase(run.applicationFolder));
        if (run.counterUse == CounterUse::kReadOnly)
            readAndAdvance(*database);
        else
            database->Transaction([&] { readAndAdvance(*database); });
    } catch (const RuntimeError& error) {
        problem = std::string("Le compteur n'a pas pu avancer : "_ansi) + error.description();
    }
    if (!problem.empty() && run.counterUse == CounterUse::kAdvance)
        platform.icon.notify(problem, LogLevel::kWarning);
    return value;
}

std::string withDecimalSeparator(std::string text, std::string_view separator,
                                 std::span<std::uint32_t> places) {
    if (separator.empty()) return text;
    const bool dropDecimals = separator == "x";
    if (text.find('.') != std::string::npos)
        return dropDecimals ? replaceAll(text, ".00", "", places)
                            : replaceAll(text, ".", separator, places);
    if (text.find(',') != std::string::npos)
        return dropDecimals ? replaceAll(text, ",00", "", places)
                            : replaceAll(text, ",", separator, places);
    return text;
}

}  // namespace kalvo
