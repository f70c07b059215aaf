#include "platform/asio/serial_line.h"

#include <asio/buffer.hpp>
#include <asio/post.hpp>
#include <future>
#include <utility>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kTimeToLeave{500};
// Behind the looks that every reception brings.
constexpr milliseconds kWatchInterval{1000};
constexpr milliseconds kRetryInterval{1000};
// A device that has just been plugged in is not ready at once.
constexpr milliseconds kTimeToSettle{3000};
constexpr milliseconds kHurriedInterval{100};

}  // namespace

SerialLine::SerialLine(LineParameters parameters, std::shared_ptr<LineInbox> inbox)
    : inbox_(std::move(inbox)), parameters_(std::move(parameters)) {
    stream_ = openStream();
    start();
    thread_ = std::thread([this] { io_.run(); });
}

SerialLine::SerialLine(Away, LineParameters parameters, std::shared_ptr<LineInbox> inbox)
    : inbox_(std::move(inbox)), parameters_(std::move(parameters)), lost_(true) {
    inbox_->lineChanged(true);
    awaitDevice();
    thread_ = std::thread([this] { io_.run(); });
}

SerialLine::~SerialLine() {
    const auto deadline = steady_clock::now() + kTimeToLeave;
    const bool written = waitUntilWritten(deadline);
    io_.stop();
    thread_.join();
    plugWatch_.reset();
    if (lost_) return;
    if (written) waitUntilSent(deadline);
    stream_->close();
}

std::unique_ptr<LineStream> SerialLine::openStream() {
    return openLineStream(io_, presentPath(parameters_.device), parameters_.settings,
                          parameters_.handshaking);
}

bool SerialLine::waitUntilWritten(steady_clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    return written_.wait_until(lock, deadline, [this] { return sendQueue_.empty() && !writing_; });
}

void SerialLine::waitUntilSent(steady_clock::time_point deadline) {
    while (stream_->hasUnsentOutput() && steady_clock::now() < deadline)
        std::this_thread::sleep_for(milliseconds(1));
}

void SerialLine::reconfigure(const LineSettings& settings, Handshaking handshaking) {
    // The error crosses the threads as values: an exception's storage is shared.
    struct Outcome {
        int error = 0;
        std::string description;
    };
    std::promise<Outcome> done;
    asio::post(io_, [&] {
        Outcome outcome;
        try {
            if (!lost_) stream_->configure(settings, handshaking);
            parameters_.settings = settings;
            parameters_.handshaking = handshaking;
        } catch (const RuntimeError& refusal) {
            outcome = {refusal.number(), refusal.description()};
        }
        done.set_value(std::move(outcome));
    });
    const Outcome outcome = done.get_future().get();
    if (outcome.error != 0) throw RuntimeError(outcome.error, outcome.description);
}

void SerialLine::send(std::string_view bytes) {
    if (bytes.empty()) return;
    const std::lock_guard lock(mutex_);
    if (lost_)
        throw RuntimeError(error_number::kPortIo,
                           std::string("Liaison série perdue : appareil débranché ?"_ansi));
    sendQueue_.append(bytes);
    if (std::exchange(writing_, true)) return;
    asio::post(io_, [this] { writeNext(); });
}

std::optional<ModemLines> SerialLine::modemLines() {
    const std::lock_guard lock(mutex_);
    return modemLines_;
}

void SerialLine::start() {
    read();
    if (!stream_->tellsChanges()) return;
    lookAtModem();
    watch();
}

void SerialLine::lookAtModem() {
    const auto now = stream_->modemLines();
    const std::lock_guard lock(mutex_);
    modemLines_ = now;
}

// An operation that ends while the line is already lost was cancelled by that. Any
// other failure, a cancellation by the driver of an unplugged device too, is a loss.
void SerialLine::read() {
    stream_->asyncRead(asio::buffer(readBuffer_),
                       [this](const asio::error_code& error, std::size_t size) {
                           if (lost_) return;
                           if (size > 0) inbox_->received({readBuffer_.data(), size});
                           if (error) return lose();
                           if (stream_->tellsChanges()) report();
                           read();
                       });
}

void SerialLine::writeNext() {
    {
        const std::lock_guard lock(mutex_);
        if (lost_) return;
        writeBuffer_ = std::exchange(sendQueue_, {});
    }
    stream_->asyncWrite(asio::buffer(writeBuffer_),
                        [this](const asio::error_code& error, std::size_t) {
                            if (lost_) return;
                            if (error) return lose();
                            std::size_t left = 0;
                            {
                                const std::lock_guard lock(mutex_);
                                left = sendQueue_.size();
                                writing_ = left > 0;
                            }
                            inbox_->sent(left);
                            if (left > 0) return writeNext();
                            written_.notify_all();
                        });
}

void SerialLine::watch() {
    watchTimer_.expires_after(kWatchInterval);
    watchTimer_.async_wait([this](const asio::error_code& error) {
        if (error) return;
        report();
        watch();
    });
}

void SerialLine::report() {
    const auto changes = stream_->changes();
    if (changes.breakReceived) inbox_->happened(comm_event::kBreak);
    if (changes.overflow) inbox_->happened(comm_event::kReceiveOverflow);
    if (changes.cts) inbox_->happened(comm_event::kCts);
    lookAtModem();
}

void SerialLine::lose() {
    {
        const std::lock_guard lock(mutex_);
        if (std::exchange(lost_, true)) return;
        sendQueue_.clear();
        writing_ = false;
        modemLines_.reset();
    }
    written_.notify_all();
    watchTimer_.cancel();
    stream_->close();
    inbox_->lineChanged(true);
    awaitDevice();
}

void SerialLine::awaitDevice() {
    if (parameters_.watch)
        plugWatch_ = parameters_.watch([this] { asio::post(io_, [this] { hurry(); }); });
    retryLater();
}

void SerialLine::hurry() {
    if (!lost_) return;
    hurriedUntil_ = steady_clock::now() + kTimeToSettle;
    retry();
}

void SerialLine::retryLater() {
    retryTimer_.expires_after(steady_clock::now() < hurriedUntil_ ? kHurriedInterval
                                                                  : kRetryInterval);
    retryTimer_.async_wait([this](const asio::error_code& error) {
        if (!error) retry();
    });
}

void SerialLine::retry() {
    if (!lost_) return;
    try {
        stream_ = openStream();
    } catch (const RuntimeError&) {
        // Still away, or not ready for its settings yet; the user knows it is lost.
        return retryLater();
    }
    {
        const std::lock_guard lock(mutex_);
        lost_ = false;
    }
    plugWatch_.reset();
    retryTimer_.cancel();
    inbox_->lineChanged(false);
    start();
}

}  // namespace kalvo
