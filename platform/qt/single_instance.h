// One instance of the program a user at a time.
#pragma once

#include <QLockFile>

namespace kalvo {

// Held as long as the object lives. A process that ended without letting go, be it
// killed, holds nothing.
class SingleInstance {
public:
    SingleInstance();

    // False when another instance is running.
    [[nodiscard]] bool first() const { return first_; }

private:
    QLockFile lock_;
    bool first_ = false;
};

}  // namespace kalvo
