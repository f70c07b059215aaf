// For work that nobody watches.
#pragma once

#include "platform/progress.h"

namespace kalvo {

// Shows nothing.
class NoProgress : public Progress {
public:
    void setLabel(std::string_view) override {}
    void setValue(double) override {}
    void show() override {}
    void refresh() override {}
    void unload() override {}
};

}  // namespace kalvo
