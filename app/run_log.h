// Beginning and end of a run, written down.
#pragma once

#include <string>
#include <string_view>

#include "platform/log.h"
#include "text/ansi_text.h"

namespace kalvo {

// A run ends with this object, whatever ends it.
class RunLog {
public:
    // `what` runs, as users know it, in the application folder.
    RunLog(Log& log, std::string_view applicationFolder, std::string_view what)
        : log_(log), what_(what) {
        log_.write(LogLevel::kInformation, what_ + std::string(" : début, KALVO Horizon "_ansi) +
                                               KALVO_VERSION ", dossier " +
                                               std::string(applicationFolder));
    }
    RunLog(const RunLog&) = delete;
    RunLog& operator=(const RunLog&) = delete;
    ~RunLog() { log_.write(LogLevel::kInformation, what_ + " : fin"); }

private:
    Log& log_;
    std::string what_;
};

}  // namespace kalvo
