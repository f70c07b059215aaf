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
    // Waits, for a second at most, until the client that `window` belongs to has got it.
    bool awaitFetch(xcb_window_t window);
    // What is on the clipboard, as far as it is text.
    [[nodiscard]] std::optional<std::string> text();
    // Puts the former text back, unless somebody has copied something since.
    void putBack();

private:
    void readFormer();
    void run();
    void answer(const xcb_selection_request_event_t& request);
    void keepFormer(const xcb_selection_notify_event_t& notice);
    [[nodiscard]] bool own(bool on);
    [[nodiscard]] xcb_window_t owner() const;
    [[nodiscard]] std::uint32_t clientOf(xcb_window_t window) const;

    X11Connection connection_;
    xcb_window_t window_;
    xcb_atom_t clipboard_;
    xcb_atom_t targets_;
    xcb_atom_t utf8_;
    xcb_atom_t text_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string offered_;                // UTF-8
    std::optional<std::string> former_;  // UTF-8
    bool formerRead_ = false;
    bool lent_ = false;  // the clipboard holds a text of a script
    std::uint32_t fetchedBy_ = 0;
    std::thread thread_;
};

}  // namespace kalvo
