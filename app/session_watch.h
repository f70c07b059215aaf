// The watch over typing in whatever session there is.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "app/bindings/system_bindings.h"
#include "platform/typing_watch.h"

namespace kalvo {

// What the options of a site want watched.
[[nodiscard]] WatchRules watchRules(const SystemBindings& bindings);

// Watches by these rules, connects when typing begins and the session has come back, and
// passes on that the user has had enough.
class SessionWatch : public TypingWatch {
public:
    // `begun` is called when typing begins.
    explicit SessionWatch(const SystemBindings& bindings, std::function<void()> begun = {})
        : bindings_(bindings), begun_(std::move(begun)) {}

    // Stops what is being typed now.
    void stop() { stopped_ = true; }

    void begin() override;
    [[nodiscard]] bool glance() override { return stopped_ || (watch_ && watch_->glance()); }
    [[nodiscard]] TypingStop look() override;
    [[nodiscard]] Hold hold() override { return watch_ ? watch_->hold() : Hold::kNone; }
    [[nodiscard]] bool targetInFront() override { return watch_ && watch_->targetInFront(); }
    [[nodiscard]] bool connected() override { return watch_ && watch_->connected(); }

private:
    const SystemBindings& bindings_;
    std::function<void()> begun_;
    std::unique_ptr<TypingWatch> watch_;
    bool stopped_ = false;
};

}  // namespace kalvo
