#include "platform/x11/target/target_pace.h"

#include <poll.h>

#include <algorithm>
#include <thread>

#include "platform/x11/x11_atoms.h"

namespace kalvo {

namespace {

using std::chrono::milliseconds;

// Questions for each lead: the answer to one is there before the next is due.
constexpr std::uint64_t kQuestions = 4;
// The focus may move while an answer is waited for.
constexpr milliseconds kTimeBetweenLooks{100};
// What a silent application is given, beyond its assumed pace, before keys change their
// meaning.
constexpr milliseconds kGrace{1000};
constexpr std::uint64_t kSlowPace = 500;  // keys in a second

}  // namespace

TargetPace::TargetPace(X11Connection& connection, X11Keymap& keymap, const KeyInjector& injector,
                       FocusedApplication& target)
    : connection_(connection),
      keymap_(keymap),
      injector_(injector),
      target_(target),
      protocols_(atomOf(connection, "WM_PROTOCOLS")),
      ping_(atomOf(connection, "_NET_WM_PING")) {
    keymap_.onOtherEvents([this](const xcb_generic_event_t& event) { handle(event); });
}

bool TargetPace::await(milliseconds limit) {
    if (injector_.presses() - asked_ >= std::max<std::uint64_t>(lead_ / kQuestions, 1)) ask();
    if (ahead() < lead_) return true;
    keymap_.readEvents();
    if (ahead() < lead_) return true;
    if (silent())
        assumeReading(limit);
    else
        waitForAnswer(limit);
    return false;
}

bool TargetPace::settle() {
    if (ahead() == 0) return !silent();
    ask();
    if (silent()) {
        connection_.flush();
        std::this_thread::sleep_for(kGrace + milliseconds(ahead() * 1000 / kSlowPace));
        read_ = injector_.presses();
    }
    while (ahead() > 0 && connection_.alive()) waitForAnswer(kTimeBetweenLooks);
    return !silent();
}

void TargetPace::rest() {
    if (!listening_) return;
    listen(false);
    questions_.clear();
    asked_ = read_;
}

// Whoever has got the focus has read everything that was typed for it.
void TargetPace::lookAtTarget() {
    if (!target_.look()) return;
    questions_.clear();
    read_ = asked_ = injector_.presses();
    mute_ = XCB_NONE;
    assumed_ = Clock::now();
}

void TargetPace::ask() {
    lookAtTarget();
    asked_ = injector_.presses();
    if (silent()) return;
    listen(true);
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = target_.answering();
    question.type = protocols_;
    question.data.data32[0] = ping_;
    question.data.data32[1] = ++serial_;
    question.data.data32[2] = target_.answering();
    xcb_send_event(connection_.get(), 0, target_.answering(), XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&question));
    // On its way, but who holds the layout goes on holding it.
    xcb_flush(connection_.get());
    questions_.push_back({serial_, asked_, Clock::now()});
}

// Answers come to the root window, for a window manager: as to one that looks at its children
// or, as the Qt toolkit sends them, at the root itself.
void TargetPace::listen(bool on) {
    if (on == listening_) return;
    listening_ = on;
    const std::uint32_t events =
        on ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY
           : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &events);
}

void TargetPace::handle(const xcb_generic_event_t& event) {
    constexpr unsigned kType = 0x7F;  // the rest says that a client has sent it
    if ((event.response_type & kType) != XCB_CLIENT_MESSAGE) return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == protocols_ && message.data.data32[0] == ping_ &&
        message.data.data32[2] == target_.answering())
        answered(message.data.data32[1]);
}

void TargetPace::answered(std::uint32_t serial) {
    const auto question = std::find_if(questions_.begin(), questions_.end(),
                                       [&](const Question& q) { return q.serial == serial; });
    if (question == questions_.end()) return;
    read_ = question->presses;
    questions_.erase(questions_.begin(), question + 1);
}

void TargetPace::waitForAnswer(milliseconds limit) {
    if (questions_.empty()) ask();
    keymap_.readEvents();
    if (questions_.empty()) return;
    connection_.flush();
    const milliseconds wait = std::min(limit, kTimeBetweenLooks);
    pollfd news{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
    const bool came = poll(&news, 1, static_cast<int>(wait.count())) > 0;
    keymap_.readEvents();
    if (came) return;
    lookAtTarget();
    if (!questions_.empty() && Clock::now() - questions_.front().asked > kPatience) {
        mute_ = target_.answering();
        questions_.clear();
        read_ = injector_.presses();
        assumed_ = Clock::now();
    }
}

void TargetPace::assumeReading(milliseconds limit) {
    const std::uint64_t pace = 2 * lead_;  // keys in a second
    const auto catchUp = [&] {
        const Clock::time_point now = Clock::now();
        const auto passed = std::chrono::duration_cast<milliseconds>(now - assumed_);
        const std::uint64_t keys = pace * static_cast<std::uint64_t>(passed.count()) / 1000;
        if (keys == 0) return;
        read_ = std::min(read_ + keys, injector_.presses());
        assumed_ = now;
    };
    catchUp();
    if (ahead() < lead_) return;
    connection_.flush();
    std::this_thread::sleep_for(
        std::min(limit, milliseconds((ahead() - lead_ + 1) * 1000 / pace + 1)));
    catchUp();
}

}  // namespace kalvo
