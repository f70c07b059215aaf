#include "tests/x11/recording_window.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "text/ansi_text.h"

namespace kalvo::testing {

namespace {

// ClientMessage formats that mean something here: a mark, and the end.
constexpr long kMark = 1;
constexpr long kEnd = 2;

constexpr KeyCode kAnyKey = 38;

bool isModifier(KeySym symbol) { return IsModifierKey(symbol) || symbol == XK_Scroll_Lock; }

std::string textOf(XKeyEvent& event) {
    std::array<char, 16> ignored{};
    KeySym symbol = NoSymbol;
    XLookupString(&event, ignored.data(), ignored.size(), &symbol, nullptr);
    if (isModifier(symbol)) return {};
    std::string text;
    if ((event.state & ControlMask) != 0) text += '^';
    if ((event.state & Mod1Mask) != 0) text += '%';
    const std::uint32_t codePoint = xkb_keysym_to_utf32(static_cast<xkb_keysym_t>(symbol));
    if (codePoint != 0) return text + unicodeToAnsi(static_cast<char32_t>(codePoint));
    const char* const name = XKeysymToString(symbol);
    return text + "{" + (name == nullptr ? "nothing" : name) + "}";
}

}  // namespace

// One connection reads, another sends the marks: a display belongs to one thread.
struct RecordingWindow::Connection {
    explicit Connection(const char* name) : reader(XOpenDisplay(name)), sender(XOpenDisplay(name)) {
        if (reader == nullptr || sender == nullptr) throw std::runtime_error("no display");
        window = XCreateSimpleWindow(reader, DefaultRootWindow(reader), 0, 0, 300, 200, 0, 0, 0);
        XSelectInput(reader, window, KeyPressMask | ExposureMask);
        marks = XCreateSimpleWindow(reader, DefaultRootWindow(reader), 0, 0, 1, 1, 0, 0, 0);
        XSetWMProtocols(reader, window, &ping, 1);
        XClassHint names{instance.data(), className.data()};
        XSetClassHint(reader, window, &names);
        XMapWindow(reader, window);
        XEvent event;
        XWindowEvent(reader, window, ExposureMask, &event);
        XSetInputFocus(reader, window, RevertToParent, CurrentTime);
        // Xlib loads the key map with the first key it looks up and hears of changes
        // only from then on; an application has done that long before it is typed into.
        XkbKeycodeToKeysym(reader, kAnyKey, 0, 0);
        XSync(reader, False);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        XCloseDisplay(reader);
        XCloseDisplay(sender);
    }

    void send(long what) const {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = marks;
        event.xclient.format = 32;
        event.xclient.data.l[0] = what;
        XSendEvent(sender, marks, False, NoEventMask, &event);
        XSync(sender, False);
    }

    // "Are you alive?" goes back to the root window as it came.
    [[nodiscard]] bool answers(XEvent& event) const {
        if (event.type != ClientMessage || static_cast<Atom>(event.xclient.data.l[0]) != ping)
            return false;
        event.xclient.window = DefaultRootWindow(reader);
        XSendEvent(reader, event.xclient.window, False,
                   SubstructureNotifyMask | SubstructureRedirectMask, &event);
        XFlush(reader);
        return true;
    }

    void askForClipboard() const {
        XConvertSelection(reader, XInternAtom(reader, "CLIPBOARD", False), utf8, utf8, window,
                          CurrentTime);
        XFlush(reader);
    }

    [[nodiscard]] std::string clipboardText() const {
        Atom type = None;
        int format = 0;
        unsigned long count = 0;
        unsigned long rest = 0;
        unsigned char* bytes = nullptr;
        XGetWindowProperty(reader, window, utf8, 0, 65536, True, utf8, &type, &format, &count,
                           &rest, &bytes);
        std::string text(reinterpret_cast<char*>(bytes), count);
        XFree(bytes);
        return fromUtf8(text);
    }

    std::string instance = "recorder";
    std::string className = "Recorder";
    Display* reader;
    Display* sender;
    Atom utf8 = XInternAtom(reader, "UTF8_STRING", False);
    Atom ping = XInternAtom(reader, "_NET_WM_PING", False);
    Window window = None;
    Window marks = None;  // stays when the other is destroyed
};

RecordingWindow::RecordingWindow(const char* display)
    : connection_(std::make_unique<Connection>(display)), reader_([this] { read(); }) {}

RecordingWindow::~RecordingWindow() {
    connection_->send(kEnd);
    reader_.join();
}

void RecordingWindow::read() {
    for (;;) {
        XEvent event;
        XNextEvent(connection_->reader, &event);
        std::unique_lock busy(mutex_);
        const auto pause = std::exchange(busy_, std::chrono::milliseconds{0});
        busy.unlock();
        std::this_thread::sleep_for(pause);
        if (connection_->answers(event)) continue;
        if (event.type == MappingNotify) XRefreshKeyboardMapping(&event.xmapping);
        if (event.type == ClientMessage && event.xclient.data.l[0] == kEnd) return;
        std::string text;
        if (event.type == KeyPress) text = textOf(event.xkey);
        if (event.type == SelectionNotify) text = "[" + connection_->clipboardText() + "]";
        if (text == "^v") {
            connection_->askForClipboard();
            continue;
        }
        const std::lock_guard lock(mutex_);
        text_ += text;
        if (event.type == ClientMessage) {
            ++marks_;
            marked_.notify_all();
        }
    }
}

std::string RecordingWindow::take() {
    std::unique_lock lock(mutex_);
    const int seen = marks_;
    lock.unlock();
    connection_->send(kMark);
    lock.lock();
    marked_.wait(lock, [&] { return marks_ > seen; });
    return std::exchange(text_, {});
}

void RecordingWindow::destroy() const {
    XDestroyWindow(connection_->sender, connection_->window);
    XSync(connection_->sender, False);
}

void RecordingWindow::beBusyFor(std::chrono::milliseconds time) {
    const std::lock_guard lock(mutex_);
    busy_ = time;
}

std::size_t RecordingWindow::size() {
    const std::lock_guard lock(mutex_);
    return text_.size();
}

}  // namespace kalvo::testing
