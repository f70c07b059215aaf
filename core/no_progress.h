// For work that nobody watches.
#pragma once

#include "platform/platform.h"
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

// The same services, but settings are asked of `profiles`, and nobody watches: for working out
// what a scenario would do.
[[nodiscard]] inline Platform dryRun(const Platform& platform, ProfileFiles& profiles,
                                     NoProgress& progress) {
    return {platform.keyboard,  platform.port,  profiles,        platform.registry,
            platform.databases, platform.files, platform.events, platform.dialogs,
            platform.icon,      progress,       platform.watch,  platform.log};
}

}  // namespace kalvo
