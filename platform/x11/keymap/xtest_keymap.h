// The XTEST keyboard's own key map.
#pragma once

#include "platform/x11/x11_connection.h"

namespace kalvo {

// Gives the XTEST keyboard the map of the core keyboard if it has another one: the
// server would otherwise put the XTEST map in force with the first key typed, and
// "a" would come out as "q" on an AZERTY keyboard.
void alignXtestKeymap(X11Connection& connection);

}  // namespace kalvo
