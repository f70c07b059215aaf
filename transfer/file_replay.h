// Replay of a text file through the active scenario, as if its content had come in
// on the serial port.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/batch_report.h"
#include "platform/platform.h"
#include "scenario/scenario_run.h"

namespace kalvo {

// Reads a file of records, one to a line, their fields parted by `separator` (not
// empty), and types or writes what the scenario makes of them. Nothing, with a message,
// when there is no such file. The script is typed as one that is replayed.
std::optional<BatchReport> ReplayFile(const Platform& platform, ScenarioRun& run,
                                      std::string_view file, std::string_view separator);

// The same for a text that is no file of its own.
BatchReport ReplayText(const Platform& platform, ScenarioRun& run, std::string_view text,
                       std::string_view separator);

// Who lets a replay have its turn at the keyboard.
using ReplayTurn = std::function<void(const std::function<std::optional<BatchReport>()>& replay)>;
inline void replayAtOnce(const std::function<std::optional<BatchReport>()>& replay) { replay(); }

// The replay window frmFichiers without its controls.
class ReplayForm {
public:
    ReplayForm(const Platform& platform, ScenarioRun& run, ReplayTurn turn = replayAtOnce)
        : platform_(platform), run_(run), turn_(std::move(turn)) {}

    // Lets the user pick a file; empty when there was no choice.
    [[nodiscard]] std::string getFile() const;

    // Whether a replay of these two can start; the user is told what is missing.
    [[nodiscard]] bool complete(std::string_view file, std::string_view separator) const;

    // The replay; the window must be closed by now, so that the target has the focus.
    void start(std::string_view file, std::string_view separator);

private:
    [[nodiscard]] std::string startFolder() const;

    Platform platform_;
    ScenarioRun& run_;
    ReplayTurn turn_;
};

}  // namespace kalvo
