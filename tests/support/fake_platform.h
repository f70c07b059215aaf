// The whole outside world, in memory.
#pragma once

#include "platform/platform.h"
#include "platform/typing_watch.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/fake_file_system.h"
#include "tests/support/fake_keyboard.h"
#include "tests/support/fake_profile_files.h"
#include "tests/support/fake_registry.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/fake_user_interface.h"
#include "tests/support/scripted_database.h"

namespace kalvo::testing {

struct FakePlatform {
    FakeKeyboard keyboard;
    FakeSerialPort port;
    FakeProfileFiles profiles;
    FakeRegistry registry;
    ScriptedDatabase databases;
    FakeFileSystem files;
    FakeEventPump events;
    FakeDialogs dialogs;
    FakeNotifyIcon icon;
    FakeProgress progress;
    TypingWatch watch;

    Platform platform{keyboard, port,    profiles, registry, databases, files,
                      events,   dialogs, icon,     progress, watch};
};

}  // namespace kalvo::testing
