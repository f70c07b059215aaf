// How far typing is ahead of the application that is typed into.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <deque>

#include "platform/x11/key_injector.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/target/focused_application.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// The X server takes keys much faster than any application reads them. An application
// that answers _NET_WM_PING is asked now and then: its answer says that it has read
// everything typed before the question. Of one that does not, or not within kPatience,
// it is assumed that it reads twice the lead in a second.
class TargetPace {
public:
    static constexpr int kUsualLead = 2000;
    static constexpr std::chrono::seconds kPatience{30};

    TargetPace(X11Connection& connection, X11Keymap& keymap, const KeyInjector& injector,
               FocusedApplication& target);

    // How many keys typing may be ahead, at least 1.
    void setLead(int keys) { lead_ = static_cast<std::uint64_t>(keys); }

    // Takes note of who has the focus now.
    void lookAtTarget();

    // Waits, at most that long, when typing is the lead ahead or more. False when it was.
    // Costs nothing as long as there is no need to ask or wait.
    bool await(std::chrono::milliseconds limit);

    // Waits until everything typed so far has been read, or kPatience is over. True when
    // the application has said so itself.
    bool settle();

    // Typing pauses: no more answers are of interest.
    void rest();

private:
    using Clock = std::chrono::steady_clock;

    // What has been asked and not been answered.
    struct Question {
        std::uint32_t serial;
        std::uint64_t presses;  // typed before it
        Clock::time_point asked;
    };

    [[nodiscard]] std::uint64_t ahead() const { return injector_.presses() - read_; }
    void ask();
    void listen(bool on);
    void handle(const xcb_generic_event_t& event);
    void answered(std::uint32_t serial);
    void waitForAnswer(std::chrono::milliseconds limit);
    void assumeReading(std::chrono::milliseconds limit);
    [[nodiscard]] bool silent() const {
        return target_.answering() == XCB_NONE || target_.answering() == mute_;
    }

    X11Connection& connection_;
    X11Keymap& keymap_;
    const KeyInjector& injector_;
    FocusedApplication& target_;
    xcb_atom_t protocols_;
    xcb_atom_t ping_;
    std::uint64_t lead_ = kUsualLead;
    std::uint64_t read_ = 0;   // presses that the application has read
    std::uint64_t asked_ = 0;  // presses before the last question
    std::uint32_t serial_ = 0;
    std::deque<Question> questions_;
    xcb_window_t mute_ = XCB_NONE;  // did not answer in time
    Clock::time_point assumed_;     // when `read_` was last worked out for a silent one
    bool listening_ = false;
};

}  // namespace kalvo
