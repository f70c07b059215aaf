// A session without a display, or whose display goes away and comes back.
#pragma once

#include "platform/log.h"

namespace kalvo {

// Before the toolkit starts, which would end the process its own way and in English. From
// here on a display that cannot be reached ends the process with a French line on standard
// error and exit code 1. One that is lost takes the windows with it: the process begins anew
// and, in the next run, waits here until the display is back, two minutes at most. False,
// and said, when there is none to begin with or it does not come back.
[[nodiscard]] bool watchDisplay();

// Whether this run waited for a display to come back.
[[nodiscard]] bool displayCameBack();

// Where the loss is written down as long as the object lives.
class LoggedDisplayLoss {
public:
    explicit LoggedDisplayLoss(Log& log);
    LoggedDisplayLoss(const LoggedDisplayLoss&) = delete;
    LoggedDisplayLoss& operator=(const LoggedDisplayLoss&) = delete;
    ~LoggedDisplayLoss();
};

}  // namespace kalvo
