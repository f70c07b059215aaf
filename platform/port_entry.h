// A serial port of this machine.
#pragma once

#include <string>

namespace kalvo {

struct PortEntry {
    int number = 0;           // the n of COMn, from 1
    std::string device;       // path, or COMn; code page 1252
    std::string description;  // for the user; code page 1252
};

}  // namespace kalvo
