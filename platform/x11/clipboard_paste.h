// Text by way of the clipboard.
#pragma once

#include <xcb/xcb.h>

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/x11/x11_connection.h"

namespace kalvo {

// Offers texts on the clipboard, one after another, and afterwards what was there before,
// as far as that was text and as long as the program runs. A connection and a thread of
// its own answer whoever asks.
class ClipboardPaste {
public:
    explicit ClipboardPaste(const std::string& display);
    ~ClipboardPaste();
    ClipboardPaste(const ClipboardPaste&) = delete;
    ClipboardPaste& operator=(const ClipboardPaste&) = delete;

    // Puts a text (code page 1252) on the clipboard. False when the server refuses.
    bool offer(std::string_view text);
    // Each waits, for a second at most, for the client that `window` belongs to or another
    // process of the same program: Wine has one that asks for all its programs.
    // Until it has looked what there is: under Wine, pasting gives what was there then.
    bool awaitNotice(xcb_window_t window);
    // Until it has got the text.
    bool awaitFetch(xcb_window_t window);
    // The same for any client at all.
    bool awaitAnyFetch();
    // What is on the clipboard, as far as it is text.
    [[nodiscard]] std::optional<std::string> text();
    // Puts the former text back, unless somebody has copied something since.
    void putBack();

private:
    struct Asker {
        std::uint32_t client = 0;
        std::string program;
    };

    void readFormer();
    bool await(const Asker& asker, xcb_window_t window);
    void run();
    void answer(const xcb_selection_request_event_t& request);
    void keepTime(const xcb_property_notify_event_t& notice);
    void keepFormer(const xcb_selection_notify_event_t& notice);
    [[nodiscard]] bool own(bool on);
    [[nodiscard]] xcb_timestamp_t serverTime();
    [[nodiscard]] xcb_window_t owner() const;
    [[nodiscard]] std::uint32_t clientOf(xcb_window_t window) const;

    X11Connection connection_;
    xcb_window_t window_;
    xcb_atom_t clipboard_;
    xcb_atom_t targets_;
    xcb_atom_t timestamp_;
    xcb_atom_t utf8_;
    xcb_atom_t text_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string offered_;                // UTF-8
    std::optional<std::string> former_;  // UTF-8
    bool formerRead_ = false;
    xcb_timestamp_t time_ = XCB_CURRENT_TIME;  // of the server
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    bool lent_ = false;  // the clipboard holds a text of a script
    Asker noticed_;
    Asker fetched_;
    std::thread thread_;
};

}  // namespace kalvo
