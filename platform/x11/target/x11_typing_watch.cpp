#include "platform/x11/target/x11_typing_watch.h"

#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/x11/held/real_keyboards.h"

namespace kalvo {

namespace {

// An application that closes a dialog leaves the focus to nobody until the window manager
// has found the next one.
constexpr std::chrono::milliseconds kFocusGap{1000};

constexpr std::uint32_t kRawKeys =
    XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;

}  // namespace

X11TypingWatch::X11TypingWatch(std::function<WatchRules()> rules, const char* display)
    : rules_(std::move(rules)), connection_(display) {
    select(XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
    listenToKeyboards();
}

void X11TypingWatch::select(std::uint16_t device, std::uint32_t events) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t events;
    } mask{};
    mask.head.deviceid = device;
    mask.head.mask_len = 1;
    mask.events = events;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &mask.head);
}

// Every pair of master devices has an XTEST keyboard of its own. Nothing of those is sent
// here at all: to be told of each key typed would cost the server as much as the typing.
void X11TypingWatch::listenToKeyboards() {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        x, xcb_input_xi_query_device(x, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!reply) return;
    for (auto at = xcb_input_xi_query_device_infos_iterator(reply.get()); at.rem > 0;
         xcb_input_xi_device_info_next(&at)) {
        if (at.data->type != XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
            at.data->type != XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE)
            continue;
        const std::string_view name(xcb_input_xi_device_info_name(at.data), at.data->name_len);
        select(at.data->deviceid, name.ends_with("XTEST keyboard") ? 0 : kRawKeys);
    }
    connection_.flush();
}

void X11TypingWatch::begin() {
    rule_ = rules_();
    findStopKey();
    target_ = known_ = applications_.focused();
    application_ = applications_.of(target_);
    forgetKeys();
}

// What is down already is none of our business until it is up.
void X11TypingWatch::forgetKeys() {
    readKeys();
    heldBefore_ = keysDown(connection_, realKeyboards(connection_));
    down_.clear();
    stopKeyPressed_ = keyPressed_ = false;
    nobodySince_ = {};
    hold_ = Hold::kNone;
}

void X11TypingWatch::findStopKey() {
    xcb_connection_t* const x = connection_.get();
    const xcb_setup_t* const setup = xcb_get_setup(x);
    const auto keys = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const XReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        x, xcb_get_keyboard_mapping(x, setup->min_keycode, keys), nullptr));
    stopKey_ = 0;
    if (!map || map->keysyms_per_keycode == 0) return;
    const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    const xcb_keysym_t* const end = symbols + xcb_get_keyboard_mapping_keysyms_length(map.get());
    const auto at = std::find(symbols, end, xcb_keysym_t{XKB_KEY_Escape}) - symbols;
    if (at < end - symbols)
        stopKey_ = static_cast<std::uint8_t>(setup->min_keycode + at / map->keysyms_per_keycode);
}

// No question to the server: it may be serving our other connection only.
bool X11TypingWatch::glance() {
    readKeys();
    return keyPressed_;
}

TypingStop X11TypingWatch::look() {
    // Behind the answer every key pressed before it has arrived.
    const xcb_window_t focused = applications_.focused();
    readKeys();
    if (std::exchange(keyboardsChanged_, false)) listenToKeyboards();
    hold_ = keyDown() || std::exchange(keyPressed_, false) ? Hold::kUserKey : Hold::kNone;
    if (stopKeyPressed_) return TypingStop::kStopKey;
    return rule_.targetGuard ? lookAtFocus(focused) : TypingStop::kNone;
}

TypingStop X11TypingWatch::lookAtFocus(xcb_window_t focused) {
    if (target_ == XCB_NONE) return TypingStop::kNoTarget;
    if (focused != XCB_NONE) {
        nobodySince_ = {};
        if (focused == known_) return TypingStop::kNone;
        if (applications_.of(focused).sameAs(application_)) {
            known_ = focused;
            return TypingStop::kNone;
        }
        return applications_.exists(target_) ? TypingStop::kOtherApplication
                                             : TypingStop::kTargetGone;
    }
    if (!connection_.alive()) return TypingStop::kNone;
    const Clock::time_point now = Clock::now();
    if (nobodySince_ == Clock::time_point{}) nobodySince_ = now;
    if (now - nobodySince_ >= kFocusGap)
        return applications_.exists(target_) ? TypingStop::kOtherApplication
                                             : TypingStop::kTargetGone;
    if (hold_ == Hold::kNone) hold_ = Hold::kFocusMoves;
    return TypingStop::kNone;
}

bool X11TypingWatch::targetInFront() {
    const xcb_window_t focused = applications_.focused();
    return focused != XCB_NONE && target_ != XCB_NONE &&
           (focused == known_ || applications_.of(focused).sameAs(application_));
}

bool X11TypingWatch::keyDown() const {
    return std::any_of(down_.begin(), down_.end(),
                       [](const auto& keyboard) { return keyboard.second.any(); });
}

void X11TypingWatch::readKeys() {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if ((event->response_type & 0x7FU) != XCB_GE_GENERIC) continue;
        switch (reinterpret_cast<const xcb_ge_generic_event_t&>(*event).event_type) {
            case XCB_INPUT_HIERARCHY: {
                // A keyboard that is pulled out never releases its keys.
                keyboardsChanged_ = true;
                down_.clear();
                break;
            }
            case XCB_INPUT_RAW_KEY_PRESS:
            case XCB_INPUT_RAW_KEY_RELEASE: {
                const auto& key = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(*event);
                keyMoved(key.deviceid, key.detail, key.event_type == XCB_INPUT_RAW_KEY_PRESS);
                break;
            }
            default: break;
        }
    }
}

void X11TypingWatch::keyMoved(std::uint16_t keyboard, std::uint32_t key, bool down) {
    if (key >= heldBefore_.size()) return;
    if (!down) {
        heldBefore_.reset(key);
        down_[keyboard].reset(key);
        return;
    }
    if (heldBefore_[key]) return;
    down_[keyboard].set(key);
    keyPressed_ = true;
    if (rule_.stopKey && key == stopKey_ && stopKey_ != 0) stopKeyPressed_ = true;
}

}  // namespace kalvo
