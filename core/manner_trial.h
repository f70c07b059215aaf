// A trial of how an application wants to be typed into.
#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"
#include "platform/typing_manner.h"
#include "platform/typing_watch.h"

namespace kalvo {

enum class TrialOutcome {
    kExact,       // with `manner`
    kStopped,     // typing was, for the reason `stop`
    kUnreadable,  // nothing comes back by the clipboard
    kNoneExact,
};

struct MannerTrial {
    TrialOutcome outcome = TrialOutcome::kNoneExact;
    TypingStop stop = TypingStop::kNone;
    std::string application;  // the name that counts most; empty where the session tells none
    TypingManner manner;
};

// Types a known text into the application in front, reads it back by the clipboard, and
// tries other manners, the gentlest first, until it comes out right. What is in the field
// is replaced. Whoever calls gives the keyboard its usual manners again.
[[nodiscard]] MannerTrial tryManners(const Platform& platform);

// What came of it in French; what is to be put into Applications.ini is left to the caller.
[[nodiscard]] std::string verdictOf(const MannerTrial& trial);

// Whether an entry of Applications.ini would help.
[[nodiscard]] inline bool wantsEntry(const MannerTrial& trial) {
    return trial.outcome == TrialOutcome::kExact && trial.manner != TypingManner();
}

}  // namespace kalvo
