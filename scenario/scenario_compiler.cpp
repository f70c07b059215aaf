#include "scenario/scenario_compiler.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/file_system.h"
#include "platform/profile_files.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_warnings.h"
#include "settings/options.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

using scenario_file::Entry;

constexpr std::string_view kLineEnd = "\r\n";

// A line end or NUL in a value would begin something else in the file.
bool fitsOnALine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

class Compiler {
public:
    Compiler(Database& database, const ScenarioRecord& scenario)
        : database_(database), scenario_(scenario) {}

    CompiledScenario run() {
        step([&] { renumberActions(database_, scenario_.Numero); });
        collectActions();
        set(scenario_file::kType, scenario_.Type);
        set(scenario_file::kActionLine, line_);
        set(scenario_file::kBoucle, std::to_string(scenario_.Boucle));
        set(scenario_file::kDepart, std::to_string(scenario_.Depart));
        set(scenario_file::kSubFrames, subFrames_);
        set(scenario_file::kPartialMode, std::to_string(scenario_.Trame));
        set(scenario_file::kCompiledCount, std::to_string(scenario_.NbrTrame));
        set(scenario_file::kSpecif, std::to_string(scenario_.Specif));
        if (scenario_.Type == kFileType) set(scenario_file::kChemin, scenario_.Chemin);
        if (result_.refusal.empty()) result_.refusal = refusalOfName(scenario_.Nom);
        return std::move(result_);
    }

private:
    void collectActions() {
        for (std::int32_t position = 1;; ++position) {
            std::optional<ActionRecord> action;
            step([&] { action = readAction(database_, scenario_.Numero, position); });
            if (!action) return;
            if (!fitsOnALine(action->Champs)) refuseStep(position);
            line_.append(action->Champs).append(scenario_file::kItemEnd);
            result_.steps.push_back(action->Champs);
            if (action->PlaceTrame != 0) appendSubFrame(action->PlaceTrame);
        }
    }

    // A list is read back before it grows, and no more of it than a reader gets.
    void appendSubFrame(std::int16_t place) {
        subFrames_.resize(std::min(subFrames_.size(), kLongestProfileValue));
        subFrames_.append(std::to_string(place)).append(scenario_file::kItemEnd);
    }

    void refuseStep(std::int32_t position) {
        result_.refusal = std::string("L'étape "_ansi) + std::to_string(position) +
                          std::string(" du scénario contient un saut de ligne"_ansi);
    }

    void set(const Entry& entry, std::string_view value) {
        if (!fitsOnALine(value) && result_.refusal.empty())
            result_.refusal = std::string(entry.section) +
                              std::string(" : la valeur contient un saut de ligne"_ansi);
        result_.values.push_back({entry, std::string(value)});
    }

    template <typename Statement>
    void step(Statement&& statement) {
        result_.complete &= resumeNext(std::forward<Statement>(statement));
    }

    Database& database_;
    const ScenarioRecord& scenario_;
    std::string line_;
    std::string subFrames_;
    CompiledScenario result_;
};

// A file that has the content already is left alone: nothing can go wrong with it.
void place(FileSystem& files, const std::string& file, std::string_view content) {
    std::string present;
    const bool read = resumeNext([&] { present = files.read(file); });
    if (!read || present != content) files.replace(file, content);
}

}  // namespace

std::string CompiledScenario::fileText() const {
    std::string text;
    std::string_view section;
    for (const auto& [entry, value] : values) {
        if (entry.section != section) text.append("[").append(entry.section).append("]\r\n");
        section = entry.section;
        text.append(entry.key).append("=").append(value).append(kLineEnd);
    }
    return text;
}

CompiledScenario compiled(Database& database, const ScenarioRecord& scenario) {
    return Compiler(database, scenario).run();
}

std::vector<std::string> warningsOf(const Platform& platform, Database& database,
                                    std::string_view applicationFolder,
                                    const ScenarioRecord& scenario,
                                    const CompiledScenario& compiled) {
    std::optional<std::int16_t> counter;
    resumeNext([&] { counter = readCounter(database); });
    return scenarioWarnings({scenario, compiled.steps,
                             optionSet(platform.profiles, applicationFolder, Option::kPartialFrame),
                             counter.value_or(0)});
}

Compilation CompileScenario(const Platform& platform, Database& database,
                            std::string_view applicationFolder, std::int16_t numero) {
    std::optional<ScenarioRecord> scenario;
    resumeNext([&] { scenario = readScenario(database, numero); });
    if (!scenario) return {};
    const CompiledScenario result = compiled(database, *scenario);
    Compilation compilation{
        .complete = result.complete,
        .problem = result.refusal,
        .warnings = warningsOf(platform, database, applicationFolder, *scenario, result)};
    if (result.refusal.empty()) {
        try {
            place(platform.files,
                  findScenarioFile(platform.files, applicationFolder, scenario->Nom),
                  result.fileText());
        } catch (const RuntimeError& error) {
            compilation.problem =
                std::string("Le fichier du scénario n'a pas pu être écrit : "_ansi) +
                error.description();
        }
    }
    compilation.complete &= compilation.problem.empty();
    return compilation;
}

}  // namespace kalvo
