// A session without a display, or whose display goes away.
#pragma once

#include "platform/log.h"

namespace kalvo {

// Before the toolkit starts, which would end the process its own way and in English. From
// here on a display that cannot be reached, or is lost, ends the process with a French line
// on standard error and exit code 1. False, and said, when there is none to begin with.
[[nodiscard]] bool watchDisplay();

// Where the loss is written down as long as the object lives.
class LoggedDisplayLoss {
public:
    explicit LoggedDisplayLoss(Log& log);
    LoggedDisplayLoss(const LoggedDisplayLoss&) = delete;
    LoggedDisplayLoss& operator=(const LoggedDisplayLoss&) = delete;
    ~LoggedDisplayLoss();
};

}  // namespace kalvo
