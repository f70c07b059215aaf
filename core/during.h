// A mark that is set while something goes on.
#pragma once

#include <utility>

namespace kalvo {

// Calls `mark` with true now and with false at the end of the scope, also when that ends
// with an error.
template <typename Mark>
class During {
public:
    explicit During(Mark mark) : mark_(std::move(mark)) { mark_(true); }
    During(const During&) = delete;
    During& operator=(const During&) = delete;
    ~During() { mark_(false); }

private:
    Mark mark_;
};

}  // namespace kalvo
