// A window that writes down what is typed into it, as an application would see it.
#pragma once

#include <string>
#include <thread>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>

namespace kalvo::testing {

// Has the focus of its display from construction on and reads its events on a thread
// of its own, each looked up in the key map of the moment it is read, as applications
// do. Answers whether it is alive, when it gets round to it; Control+V types what the
// clipboard holds, in brackets. Its WM_CLASS is "recorder", "Recorder".
class RecordingWindow {
public:
    explicit RecordingWindow(const char* display);
    RecordingWindow(const RecordingWindow&) = delete;
    RecordingWindow& operator=(const RecordingWindow&) = delete;
    ~RecordingWindow();

    // What was typed since the last call, once everything the server has handled so far
    // has come in: characters in code page 1252 ("?" for others), Enter as CR, other
    // keys by the names of their keysyms in braces; "^" and "%" before a key mean that
    // Control or Alt is down.
    [[nodiscard]] std::string take();

    // The window goes away, as when its application closes it.
    void destroy() const;

    // Reads nothing for a while, as an application that is busy. Nothing may be taken
    // meanwhile.
    void beBusyFor(std::chrono::milliseconds time);

    // Characters read so far.
    [[nodiscard]] std::size_t size();

private:
    struct Connection;

    void read();

    std::unique_ptr<Connection> connection_;
    std::mutex mutex_;
    std::condition_variable marked_;
    std::string text_;
    int marks_ = 0;
    std::chrono::milliseconds busy_{0};
    std::thread reader_;
};

}  // namespace kalvo::testing
