#include "app/session_watch.h"

#include "settings/options.h"
#include "text/resume_next.h"

namespace kalvo {

WatchRules watchRules(const SystemBindings& bindings) {
    const auto set = [&](Option option) {
        return optionSet(*bindings.profiles, bindings.applicationFolder, option);
    };
    return {.stopKey = set(Option::kStopKey), .targetGuard = set(Option::kTargetGuard)};
}

void SessionWatch::begin() {
    stopped_ = false;
    if (begun_) begun_();
    if (!connected()) {
        watch_.reset();
        resumeNext([this] {
            watch_ =
                connectTypingWatch(bindings_.keyboard, [this] { return watchRules(bindings_); });
        });
    }
    if (watch_) watch_->begin();
}

TypingStop SessionWatch::look() {
    if (stopped_) return TypingStop::kUserStop;
    return watch_ ? watch_->look() : TypingStop::kNone;
}

}  // namespace kalvo
