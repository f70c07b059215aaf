// The log of an application folder: kalvo-horizon.log, with the four files before it.
#pragma once

#include <memory>
#include <string_view>

#include "platform/log.h"

namespace kalvo {

// Where entries go besides the file.
enum class LogEcho { kNone, kStandardError };

// Writes UTF-8 lines "2024-03-05 14:07:09.512 [erreur] text", each of them at once. A file of
// 1 MB becomes kalvo-horizon.1.log, that one .2.log, and so on up to .4.log.
//
// One process at a time writes the log of a folder, as none could rename a file that
// another one writes: a second one has its echo only. Nor is there a file, and nothing is
// said, where none can be written.
class RotatingLog : public Log {
public:
    RotatingLog(std::string_view folder, LogEcho echo);
    RotatingLog(const RotatingLog&) = delete;
    RotatingLog& operator=(const RotatingLog&) = delete;
    ~RotatingLog() override;

    void write(LogLevel level, std::string_view text) noexcept override;

private:
    struct Sinks;
    std::unique_ptr<Sinks> sinks_;
};

}  // namespace kalvo
