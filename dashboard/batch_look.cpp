#include "dashboard/batch_look.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/no_progress.h"
#include "editor/keys/key_listing.h"
#include "scenario/frame_processing.h"
#include "settings/options.h"
#include "text/line_capture.h"

namespace kalvo {

namespace {

// Enough to recognise a batch, little enough to be there at once.
constexpr std::size_t kMostBytes = 20'000;
constexpr std::size_t kMostFields = 500;
constexpr std::size_t kMostKeys = 1'000;
constexpr std::string_view kMore = "...";

// The first records, whole.
std::string_view beginningOf(std::string_view bytes) {
    if (bytes.size() <= kMostBytes) return bytes;
    const std::size_t end = bytes.find_last_of("\r\n", kMostBytes);
    return bytes.substr(0, end == std::string_view::npos ? kMostBytes : end + 1);
}

std::vector<std::string> fieldsOf(const FrameFieldTable& table) {
    std::vector<std::string> fields;
    // What follows the last CR is a field when it is there.
    const std::size_t count = table.FieldCount() + (table.at(table.FieldCount()).empty() ? 0U : 1U);
    for (std::size_t i = 0; i < std::min(count, kMostFields); ++i)
        fields.push_back(std::to_string(i + 1) + " : " + visibleText(table.at(i)));
    return fields;
}

// Lines end with CR, with LF or with both.
std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.push_back(visibleText(text.substr(0, end)));
        text.remove_prefix(end);
        text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
    }
    return lines;
}

std::vector<std::string> keysOf(const ScenarioRun& run, std::string_view script) {
    std::vector<std::string> rows;
    for (std::size_t pass = 0; pass < run.passStarts.size() && rows.size() < kMostKeys; ++pass) {
        const std::size_t begin = run.passStarts[pass];
        const std::size_t end =
            pass + 1 < run.passStarts.size() ? run.passStarts[pass + 1] : script.size();
        if (begin >= end) continue;
        rows.push_back("Enregistrement " + std::to_string(pass + 1) + " :");
        const std::string_view piece = script.substr(begin, end - begin);
        const std::vector<std::string> keys =
            run.active.FileMode ? linesOf(piece)
                                : listKeys(piece, run.TimerPause, kMostKeys - rows.size());
        for (const std::string& key : keys) rows.push_back("    " + visibleText(key));
    }
    return rows;
}

}  // namespace

BatchLook lookAt(const Platform& platform, const RunTimeState& state, std::string_view bytes) {
    NoProgress progress;
    const Platform dry = dryRun(platform, platform.profiles, progress);
    ScenarioRun run = state.scenario;
    run.counterUse = CounterUse::kReadOnly;
    std::string frame(beginningOf(bytes));
    const bool more = frame.size() < bytes.size();
    SplitFrameFields(dry, run, frame);
    BatchLook look;
    look.fields = fieldsOf(*run.FrameFields);
    look.toFile = run.active.FileMode;
    if (look.toFile && !optionSet(dry.profiles, run.applicationFolder, Option::kBuiltText))
        look.keys = linesOf(frame);
    else if (scenarioInForce(state))
        look.keys = keysOf(run, BuildKeyScript(dry, run, frame));
    if (more || look.fields.size() == kMostFields) look.fields.emplace_back(kMore);
    if (more || look.keys.size() >= kMostKeys) look.keys.emplace_back(kMore);
    return look;
}

std::string textOf(std::string_view bytes) {
    std::string text;
    for (const std::string& line : linesOf(bytes)) text.append(line).append("\r\n");
    return text;
}

bool scenarioInForce(const RunTimeState& state) {
    return state.scenario.active.ActionLines.size() > 1;
}

}  // namespace kalvo
