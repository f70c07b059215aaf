// The outside world of a test: files, INI files and databases are real ones in a folder
// of its own; what the user sees, the keyboard, the port and the registry are fakes.
#pragma once

#include <filesystem>
#include <string>

#include "platform/platform.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/typing_watch.h"
#include "settings/application_paths.h"
#include "tests/support/disk_files.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/fake_keyboard.h"
#include "tests/support/fake_registry.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/fake_user_interface.h"
#include "tests/support/temporary_folder.h"

namespace kalvo::testing {

// Sees the target go at the look with that number, counted from 1; 0: never.
struct FakeWatch : TypingWatch {
    int goneAt = 0;
    int looks = 0;
    TypingStop look() override {
        return ++looks == goneAt ? TypingStop::kTargetGone : TypingStop::kNone;
    }
};

struct FakePlatform {
    TemporaryFolder folder;
    FakeKeyboard keyboard;
    FakeSerialPort port;
    SystemProfiles profiles;
    FakeRegistry registry;
    SqliteEngine databases;
    DiskFiles files;
    FakeEventPump events;
    FakeDialogs dialogs;
    FakeNotifyIcon icon;
    FakeProgress progress;
    FakeWatch watch;
    FakeLog log;

    Platform platform{keyboard, port,    profiles, registry, databases, files,
                      events,   dialogs, icon,     progress, watch,     log};

    FakePlatform() { std::filesystem::create_directory(folder / "Scenarios"); }

    // Sets a value of a compiled scenario.
    void compiled(std::string_view scenario, std::string_view section, std::string_view key,
                  std::string_view value) {
        profiles.write(scenarioFile(folder.path(), scenario), section, key, value);
    }
    // The content of a file of the folder, byte for byte; empty when there is none.
    [[nodiscard]] std::string content(const std::string& name) const {
        return bytesOf(folder / name);
    }
};

}  // namespace kalvo::testing
