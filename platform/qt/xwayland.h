// What a Wayland session leaves of an X client's ways with windows.
#pragma once

namespace kalvo {

// Whether our windows reach a Wayland compositor through its X server: it may place them where
// it likes, and where the pointer is, is known only while it moves over one of them.
[[nodiscard]] bool throughXwayland();

}  // namespace kalvo
