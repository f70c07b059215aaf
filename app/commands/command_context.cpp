#include "app/commands/command_context.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <utility>

#include "app/application_folder.h"
#include "app/process/process_start.h"
#include "settings/application_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/file_error_text.h"

namespace kalvo {

namespace {

// Milliseconds.
constexpr std::uint32_t kPatience = 120'000;
constexpr int kLookInterval = 20;

}  // namespace

CommandOutput::CommandOutput(SystemBindings& bindings, CommandLog use)
    : log_(use == CommandLog::kNothing
               ? std::make_unique<NoLog>()
               : openLog(bindings.applicationFolder, use == CommandLog::kEverything)),
      said_(use == CommandLog::kEverything ? static_cast<Log&>(log_) : console_) {}

CommandContext::CommandContext(SystemBindings& bindings, CommandLog use)
    : output(bindings, use),
      events([this](const RuntimeError& error) {
          dialogs.message(errorText(error), kApplicationTitle, MessageIcon::kCritical);
      }),
      bindings_(bindings),
      watch_(bindings),
      keyboard_(std::make_unique<NoKeyboard>()),
      port_(std::make_unique<NoSerialPort>()) {
    state.scenario.applicationFolder = bindings.applicationFolder;
    prepareApplicationFolder(*bindings.files, dialogs, bindings.applicationFolder,
                             bindings.shippedData);
}

void CommandContext::useKeyboard(std::unique_ptr<KeyboardInput> keyboard, LeaveAnswer answer) {
    keyboard_ = std::move(keyboard);
    keyboard_->useManners(applicationManners(
        *bindings_.profiles, bindings_.applicationFolder,
        [this](std::string_view text) { output.said().write(LogLevel::kWarning, text); }));
    if (const std::string remark = keyboardRemark(*keyboard_); !remark.empty())
        output.said().write(LogLevel::kWarning, remark);
    keyboard_->requestLeave();
    if (answer == LeaveAnswer::kAwaited) awaitLeave();
}

void CommandContext::awaitLeave() {
    const std::uint32_t begin = events.GetTickCount();
    while (keyboard_->obstacle() == TypingStop::kLeaveAwaited && !events.ending() &&
           events.GetTickCount() - begin < kPatience)
        events.Sleep(kLookInterval);
}

void CommandContext::openSerialPort() {
    port_ = createSerialPort(events, *bindings_.profiles, state.scenario.applicationFolder);
}

Platform CommandContext::platform() {
    return {*keyboard_,
            *port_,
            *bindings_.profiles,
            *bindings_.registry,
            *bindings_.databases,
            *bindings_.files,
            events,
            dialogs,
            icon_,
            progress_,
            watch_,
            output.log()};
}

std::string readInput(const std::string& argument) {
    if (argument == "-")
        return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    const std::filesystem::path path = nativeFile(argument);
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw fileRuntimeError(error_number::kFileNotFound, fromUtf8(argument));
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, error))
        throw fileRuntimeError(error_number::kPathAccess, fromUtf8(argument));
    // A file says its size; what does not (a pipe, a file that grows) is read to its end.
    std::string content;
    if (const auto size = std::filesystem::file_size(path, error); !error)
        content.resize(static_cast<std::size_t>(size));
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    if (file)
        content.append(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (file.bad()) throw fileRuntimeError(error_number::kDeviceIo, fromUtf8(argument));
    return content;
}

void writeOutput(std::string_view bytes) {
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() &&
                         std::fflush(stdout) == 0;
    if (!written)
        throw RuntimeError(error_number::kDeviceIo, std::string("Erreur d'écriture"_ansi));
}

}  // namespace kalvo
