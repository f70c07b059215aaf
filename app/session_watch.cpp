#include "app/session_watch.h"

#include "settings/options.h"
#include "text/resume_next.h"

namespace kalvo {

void SessionWatch::begin() {
    stopped_ = false;
    if (begun_) begun_();
    if (!connected()) {
        watch_.reset();
        resumeNext([this] {
            watch_ = connectTypingWatch(bindings_.keyboard, [this] { return rules(); });
        });
    }
    if (watch_) watch_->begin();
}

TypingStop SessionWatch::look() {
    if (stopped_) return TypingStop::kUserStop;
    return watch_ ? watch_->look() : TypingStop::kNone;
}

WatchRules SessionWatch::rules() const {
    const auto set = [this](Option option) {
        return optionSet(*bindings_.profiles, bindings_.applicationFolder, option);
    };
    return {.stopKey = set(Option::kStopKey), .targetGuard = set(Option::kTargetGuard)};
}

}  // namespace kalvo
