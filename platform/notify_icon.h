// The icon in the notification area.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/log.h"

namespace kalvo {

// Length of a tip: texts are cut or padded with blanks to exactly this.
inline constexpr std::size_t kTipLength = 64;

// What the icon's picture tells.
enum class IconState : std::uint8_t {
    kReady,      // the port is open
    kNoPort,     // no port, or its device is away
    kTyping,     // a batch is on its way
    kAttention,  // batches wait for the user
};

class NotifyIcon {
public:
    virtual ~NotifyIcon() = default;

    // The Shell_NotifyIconA messages NIM_ADD, NIM_MODIFY and NIM_DELETE. `tip` is
    // kTipLength characters of code page 1252. Modifying an icon that is not
    // there does nothing.
    virtual void add(std::string_view tip) = 0;
    virtual void modify(std::string_view tip) = 0;
    virtual void remove() = 0;

    // A notice beside the icon (code page 1252), and whether it is good news; nobody has to
    // answer it for work to go on.
    virtual void notify(std::string_view text, LogLevel level) = 0;
};

}  // namespace kalvo
