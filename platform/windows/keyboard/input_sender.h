// Input records on their way to the session.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace kalvo {

// Sends batches and knows which keys are down. When the session takes less than it is given,
// the keys that are down come up, and nothing more is sent until acceptAgain(). All keys
// come up on destruction.
class InputSender {
public:
    // The system's SendInput; how many records it has taken.
    using Send = std::function<UINT(UINT count, INPUT* inputs, int size)>;

    explicit InputSender(Send send) : send_(std::move(send)) {}
    InputSender(const InputSender&) = delete;
    InputSender& operator=(const InputSender&) = delete;
    ~InputSender() { releaseAll(); }

    // In one batch or, with a pause (milliseconds) behind each, one by one.
    void send(std::span<INPUT> inputs, int pause);

    [[nodiscard]] bool refused() const { return refused_; }
    void acceptAgain() { refused_ = false; }

    // Whether a key was pressed and has not been released, by its virtual key.
    [[nodiscard]] bool isDown(WORD virtualKey) const;

private:
    bool sendBatch(std::span<INPUT> inputs);
    void note(const INPUT& input);
    void releaseAll();

    Send send_;
    std::vector<INPUT> down_;  // the records that pressed them
    bool refused_ = false;
};

}  // namespace kalvo
