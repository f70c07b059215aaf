// Everything the core needs from the outside world, in one place.
#pragma once

namespace kalvo {

class DatabaseEngine;
class Dialogs;
class EventPump;
class FileSystem;
class KeyboardInput;
class Log;
class NotifyIcon;
class ProfileFiles;
class Progress;
class Registry;
class SerialPort;
class TypingWatch;

// References to the bindings of a run; whoever composes the program owns them.
struct Platform {
    KeyboardInput& keyboard;
    SerialPort& port;
    ProfileFiles& profiles;
    Registry& registry;
    DatabaseEngine& databases;
    FileSystem& files;
    EventPump& events;
    Dialogs& dialogs;
    NotifyIcon& icon;
    Progress& progress;
    TypingWatch& watch;
    Log& log;
};

}  // namespace kalvo
