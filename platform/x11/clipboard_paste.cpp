#include "platform/x11/clipboard_paste.h"

#include <chrono>
#include <string_view>

#include "platform/x11/target/client_program.h"
#include "platform/x11/x11_atoms.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kNoting{20};
constexpr std::uint32_t kLongestFormer = 1 << 20;  // words; what is longer is lost
constexpr unsigned kType = 0x7F;                   // of an event; the rest says who sent it

}  // namespace

ClipboardPaste::ClipboardPaste(const std::string& display)
    : connection_(display.empty() ? nullptr : display.c_str()),
      window_(xcb_generate_id(connection_.get())),
      clipboard_(atomOf(connection_, "CLIPBOARD")),
      targets_(atomOf(connection_, "TARGETS")),
      timestamp_(atomOf(connection_, "TIMESTAMP")),
      utf8_(atomOf(connection_, "UTF8_STRING")),
      text_(atomOf(connection_, "TEXT")) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    xcb_flush(connection_.get());
    thread_ = std::thread([this] { run(); });
}

ClipboardPaste::~ClipboardPaste() {
    xcb_client_message_event_t end{};
    end.response_type = XCB_CLIENT_MESSAGE;
    end.format = 32;
    end.window = window_;
    xcb_send_event(connection_.get(), 0, window_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&end));
    xcb_flush(connection_.get());
    thread_.join();
}

bool ClipboardPaste::offer(std::string_view text) {
    if (!lent_) readFormer();
    {
        const std::lock_guard lock(mutex_);
        offered_ = toUtf8(text);
        noticed_ = fetched_ = {};
    }
    lent_ = true;
    return own(true);
}

bool ClipboardPaste::awaitNotice(xcb_window_t window) {
    if (!await(noticed_, window)) return false;
    // It puts down what it heard.
    std::this_thread::sleep_for(kNoting);
    return true;
}

bool ClipboardPaste::awaitFetch(xcb_window_t window) { return await(fetched_, window); }

bool ClipboardPaste::await(const Asker& asker, xcb_window_t window) {
    const std::uint32_t client = clientOf(window);
    const std::string program = programOf(connection_, window);
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kPatience, [&] {
        return asker.client == client || (!program.empty() && asker.program == program);
    });
}

bool ClipboardPaste::awaitAnyFetch() {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kPatience, [&] { return fetched_.client != 0; });
}

std::optional<std::string> ClipboardPaste::text() {
    readFormer();
    const std::lock_guard lock(mutex_);
    if (!former_) return std::nullopt;
    return fromUtf8(*former_);
}

void ClipboardPaste::putBack() {
    if (!lent_) return;
    lent_ = false;
    if (owner() != window_) return;
    bool keep = false;
    {
        const std::lock_guard lock(mutex_);
        offered_ = former_.value_or("");
        keep = former_.has_value();
    }
    static_cast<void>(own(keep));
}

// Each offer has a time of its own: Wine takes one from the same owner for the one before
// when it has not.
bool ClipboardPaste::own(bool on) {
    const xcb_timestamp_t now = serverTime();
    {
        const std::lock_guard lock(mutex_);
        ownedSince_ = now;
    }
    xcb_set_selection_owner(connection_.get(), on ? window_ : xcb_window_t{XCB_NONE}, clipboard_,
                            now);
    return owner() == window_;
}

// The server tells it with the change of a property.
xcb_timestamp_t ClipboardPaste::serverTime() {
    std::unique_lock lock(mutex_);
    time_ = XCB_CURRENT_TIME;
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, timestamp_,
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
    xcb_flush(connection_.get());
    changed_.wait_for(lock, kPatience, [&] { return time_ != XCB_CURRENT_TIME; });
    return time_;
}

xcb_window_t ClipboardPaste::owner() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), clipboard_), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

// What we offer ourselves from an earlier script is still in `former_`.
void ClipboardPaste::readFormer() {
    xcb_connection_t* const x = connection_.get();
    const xcb_window_t current = owner();
    if (current == window_) return;
    std::unique_lock lock(mutex_);
    former_.reset();
    if (current == XCB_NONE) return;
    formerRead_ = false;
    xcb_convert_selection(x, window_, clipboard_, utf8_, text_, XCB_CURRENT_TIME);
    xcb_flush(x);
    changed_.wait_for(lock, kPatience, [&] { return formerRead_; });
}

void ClipboardPaste::run() {
    while (const XReply<xcb_generic_event_t> event{xcb_wait_for_event(connection_.get())}) {
        switch (event->response_type & kType) {
            case XCB_SELECTION_REQUEST:
                answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
                break;
            case XCB_SELECTION_NOTIFY:
                keepFormer(reinterpret_cast<const xcb_selection_notify_event_t&>(*event));
                break;
            case XCB_PROPERTY_NOTIFY:
                keepTime(reinterpret_cast<const xcb_property_notify_event_t&>(*event));
                break;
            case XCB_CLIENT_MESSAGE: return;
            default: break;
        }
    }
}

void ClipboardPaste::answer(const xcb_selection_request_event_t& request) {
    xcb_connection_t* const x = connection_.get();
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    const std::lock_guard lock(mutex_);
    const bool text = request.target == utf8_ || request.target == text_;
    if (request.target == targets_) {
        const xcb_atom_t known[] = {targets_, timestamp_, utf8_, text_};
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, notice.requestor, notice.property,
                            XCB_ATOM_ATOM, 32, 4, known);
    } else if (request.target == timestamp_) {
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, notice.requestor, notice.property,
                            XCB_ATOM_INTEGER, 32, 1, &ownedSince_);
    } else if (text) {
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, notice.requestor, notice.property, utf8_, 8,
                            static_cast<std::uint32_t>(offered_.size()), offered_.data());
    } else {
        notice.property = XCB_ATOM_NONE;
    }
    xcb_send_event(x, 0, notice.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notice));
    xcb_flush(x);
    if (!text && request.target != targets_) return;
    Asker& asker = text ? fetched_ : noticed_;
    asker.client = clientOf(request.requestor);
    asker.program = programOf(connection_, request.requestor);
    changed_.notify_all();
}

void ClipboardPaste::keepTime(const xcb_property_notify_event_t& notice) {
    if (notice.atom != timestamp_) return;
    const std::lock_guard lock(mutex_);
    time_ = notice.time;
    changed_.notify_all();
}

void ClipboardPaste::keepFormer(const xcb_selection_notify_event_t& notice) {
    XReply<xcb_get_property_reply_t> reply;
    if (notice.property != XCB_ATOM_NONE)
        reply.reset(
            xcb_get_property_reply(connection_.get(),
                                   xcb_get_property(connection_.get(), 1, window_, notice.property,
                                                    utf8_, 0, kLongestFormer),
                                   nullptr));
    const std::lock_guard lock(mutex_);
    if (reply && reply->type == utf8_)
        former_.emplace(static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    formerRead_ = true;
    changed_.notify_all();
}

std::uint32_t ClipboardPaste::clientOf(xcb_window_t window) const {
    return window & ~xcb_get_setup(connection_.get())->resource_id_mask;
}

}  // namespace kalvo
