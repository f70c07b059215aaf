// The X server, as it is named, whether it answers, and when it is gone.
#pragma once

namespace kalvo {

// Whether the environment names an X server.
[[nodiscard]] bool x11Named();

// Whether that X server takes a connection now.
[[nodiscard]] bool x11Answers();

// Calls `handler` when Xlib finds its connection broken; it must not return. Xlib would end
// the process with a line of its own.
void onX11Loss(void (*handler)());

}  // namespace kalvo
