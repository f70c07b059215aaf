// Characters per second into a window that records them: our sender, xdotool and raw
// XTEST, side by side on one X server; all of code page 1252 under a layout that lacks most
// of it; and how soon typing is silent that is stopped. Exit code 1 if a character of ours
// was lost or a figure is below its limit.
#include <xcb/xtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include "keys/key_injection.h"
#include "platform/x11/target/x11_typing_watch.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "tests/support/fake_event_pump.h"
#include "tests/x11/keyboard_state.h"
#include "tests/x11/recording_window.h"
#include "tests/x11/x_server.h"

namespace {

using kalvo::testing::RecordingWindow;
using kalvo::testing::XServer;

constexpr std::size_t kOurs = 1'000'000;
constexpr std::size_t kRaw = 1'000'000;
constexpr std::size_t kXdotool = 20'000;
constexpr std::size_t kAnsi = 50'000;
constexpr double kLeastOfRaw = 0.6;
constexpr double kLeastTimesXdotool = 20;
constexpr double kLeastAnsi = 2220;        // characters/s
constexpr double kLongestToSilence = 300;  // milliseconds

// Plain text, lower case: no modifiers that one side would need and another not.
std::string plainText(std::size_t length) {
    constexpr std::string_view kSample = "le lot 0123 456 789 est saisi sans perte ";
    std::string text;
    while (text.size() < length) text += kSample;
    text.resize(length);
    return text;
}

// Every character of code page 1252 above ASCII, over and over.
std::string ansiText(std::size_t length) {
    std::string all;
    for (int code = 0x80; code <= 0xFF; ++code)
        if (std::string_view("\x81\x8D\x8F\x90\x9D").find(static_cast<char>(code)) ==
            std::string_view::npos)
            all += static_cast<char>(code);
    std::string text;
    while (text.size() < length) text += all;
    text.resize(length);
    return text;
}

// Stops when told to.
class Stop : public kalvo::TypingWatch {
public:
    [[nodiscard]] bool glance() override { return now; }
    [[nodiscard]] kalvo::TypingStop look() override {
        return now ? kalvo::TypingStop::kUserStop : kalvo::TypingStop::kNone;
    }
    std::atomic<bool> now = false;
};

struct Result {
    double perSecond = 0;
    std::size_t lost = 0;
};

// Until the last character has been read by the window.
Result measure(RecordingWindow& window, const std::string& text,
               const std::function<void()>& type) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    type();
    const std::string arrived = window.take();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::size_t same = 0;
    for (std::size_t i = 0; i < text.size() && i < arrived.size(); ++i)
        same += text[i] == arrived[i] ? 1 : 0;
    return {static_cast<double>(text.size()) / seconds, text.size() - same};
}

void typeRaw(kalvo::X11Connection& connection, const kalvo::testing::KeyboardState& keyboard,
             const std::string& text) {
    std::array<std::uint8_t, 256> keycodes{};
    for (const char c : text) {
        std::uint8_t& keycode = keycodes[static_cast<unsigned char>(c)];
        if (keycode == 0) keycode = keyboard.keycode(static_cast<unsigned char>(c));
        for (const std::uint8_t type : {std::uint8_t{XCB_KEY_PRESS}, std::uint8_t{XCB_KEY_RELEASE}})
            xcb_test_fake_input(connection.get(), type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                                0);
    }
    connection.sync();
}

void typeWithXdotool(const XServer& server, const std::string& text) {
    const std::string file = std::filesystem::temp_directory_path() / "kalvo-typing-bench.txt";
    std::ofstream(file) << text;
    const std::string command =
        "DISPLAY=" + std::string(server.display()) + " xdotool type --delay 0 --file " + file;
    if (std::system(command.c_str()) != 0) std::fputs("xdotool failed\n", stderr);
    std::remove(file.c_str());
}

// Milliseconds from a stop in the middle until the window has read the last key.
double timeToSilence(RecordingWindow& window, kalvo::X11Keyboard& keyboard,
                     const std::string& text) {
    using Clock = std::chrono::steady_clock;
    kalvo::testing::FakeEventPump events;
    Stop stop;
    Clock::time_point told;
    std::thread user([&] {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        told = Clock::now();
        stop.now = true;
    });
    keyboard.prepareFor(text);
    kalvo::Keysend(keyboard, events, stop).SendKeyScript(text, 0);
    static_cast<void>(window.take());
    const Clock::time_point silent = Clock::now();
    user.join();
    return std::chrono::duration<double, std::milli>(silent - told).count();
}

void print(const char* name, const Result& result, double ours) {
    std::printf("%-22s %10.0f characters/s   %6zu lost   ours is %5.2f times\n", name,
                result.perSecond, result.lost, ours / result.perSecond);
}

}  // namespace

int main() {
    const XServer server;
    server.setLayout("us");
    RecordingWindow window(server.display());
    const kalvo::testing::KeyboardState state(server.display());
    kalvo::X11Keyboard keyboard(server.display());
    kalvo::testing::FakeEventPump events;
    kalvo::X11Connection connection(server.display());

    const std::string text = plainText(kOurs);
    kalvo::X11TypingWatch watch([] { return kalvo::WatchRules(); }, server.display());
    const Result ours = measure(window, text, [&] {
        watch.begin();
        keyboard.prepareFor(text);
        kalvo::Keysend(keyboard, events, watch).SendKeyScript(text, 0);
        (void)keyboard.GetKeyState(kalvo::kVkCapital);
    });
    const std::string rawText = plainText(kRaw);
    const Result raw = measure(window, rawText, [&] { typeRaw(connection, state, rawText); });
    const std::string few = plainText(kXdotool);
    const Result xdotool = measure(window, few, [&] { typeWithXdotool(server, few); });

    const std::string ansi = ansiText(kAnsi);
    const Result full = measure(window, ansi, [&] {
        watch.begin();
        keyboard.prepareFor(ansi);
        kalvo::Keysend(keyboard, events, watch).SendKeyScript(ansi, 0);
    });
    const double silence = timeToSilence(window, keyboard, plainText(4 * kOurs));

    print("this program", ours, ours.perSecond);
    print("raw XTEST", raw, ours.perSecond);
    print("xdotool type --delay 0", xdotool, ours.perSecond);
    std::printf("%-22s %10.0f characters/s   %6zu lost\n", "code page 1252 in us", full.perSecond,
                full.lost);
    std::printf("%-22s %10.0f ms\n", "from stop to silence", silence);
    const bool good = ours.lost == 0 && full.lost == 0 &&
                      ours.perSecond >= kLeastOfRaw * raw.perSecond &&
                      ours.perSecond >= kLeastTimesXdotool * xdotool.perSecond &&
                      full.perSecond >= kLeastAnsi && silence <= kLongestToSilence;
    return good ? 0 : 1;
}
