#include "platform/spdlog/rotating_log.h"

// The names of the library's levels, as they are written.
#define SPDLOG_LEVEL_NAMES \
    { "trace", "debug", "information", "avertissement", "erreur", "critique", "off" }
#define SPDLOG_WCHAR_FILENAMES
#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <filesystem>
#include <string>

#include "platform/spdlog/log_owner.h"
#include "text/ansi_text.h"
#include "text/one_line.h"

namespace kalvo {

namespace {

constexpr std::size_t kLongestFile = 1024 * 1024;
constexpr std::size_t kFilesBefore = 4;

spdlog::level::level_enum levelOf(LogLevel level) {
    switch (level) {
        case LogLevel::kInformation: break;
        case LogLevel::kWarning: return spdlog::level::warn;
        case LogLevel::kError: return spdlog::level::err;
    }
    return spdlog::level::info;
}

std::filesystem::path nativeFolder(std::string_view folder) {
    const std::string utf8 = toUtf8(folder);
    return {std::u8string(utf8.begin(), utf8.end())};
}

}  // namespace

struct RotatingLog::Sinks {
    explicit Sinks(const std::filesystem::path& folder) : owner(folder), logger("") {}

    LogOwner owner;
    spdlog::logger logger;
};

RotatingLog::RotatingLog(std::string_view folder, LogEcho echo)
    : sinks_(std::make_unique<Sinks>(nativeFolder(folder))) {
    spdlog::logger& logger = sinks_->logger;
    logger.set_error_handler([](const std::string&) {});
    logger.flush_on(spdlog::level::info);
    if (echo == LogEcho::kStandardError)
        logger.sinks().push_back(std::make_shared<spdlog::sinks::stderr_sink_mt>());
    if (sinks_->owner.alone()) {
        try {
            logger.sinks().push_back(std::make_shared<spdlog::sinks::rotating_file_sink_mt>(
                (nativeFolder(folder) / "kalvo-horizon.log").native(), kLongestFile, kFilesBefore));
        } catch (const spdlog::spdlog_ex&) {
            // No log, then: whatever keeps it from being written is said of other files.
        }
    }
    logger.set_pattern("%Y-%m-%d %H:%M:%S.%e [%l] %v");
}

RotatingLog::~RotatingLog() = default;

void RotatingLog::write(LogLevel level, std::string_view text) noexcept {
    try {
        sinks_->logger.log(levelOf(level), toUtf8(onOneLine(text)));
    } catch (...) {
        // Not even the memory for a line: the program has other worries.
    }
}

}  // namespace kalvo
