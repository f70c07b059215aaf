// What the line has brought and no batch holds yet, in a plain file.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace kalvo {

// Appended to byte by byte as the line delivers, so that the end of the program loses
// nothing that has come in. The front of it is taken over by batches; where the rest
// begins is kept by whoever keeps the batches. Bytes that a full disk has no room for
// count in the order of arrival, too: the ones behind them keep their batches.
class ReceptionFlow {
public:
    // Goes on with a file of a run before, or begins one. `taken`: bytes at its front that
    // batches have.
    ReceptionFlow(std::filesystem::path file, std::uint64_t taken);

    // Adds bytes. Other threads may call it.
    void keep(std::string_view bytes) noexcept;
    // What a run before has left and nobody has taken, in order.
    [[nodiscard]] std::string earlier();

    // Where the rest begins in the file once the next bytes are taken.
    [[nodiscard]] std::uint64_t restAfter(std::uint64_t bytes);
    // A batch has taken the next bytes.
    void take(std::uint64_t bytes);
    // The latest bytes, as far as the file has them, and their leaving the flow.
    [[nodiscard]] std::string latest(std::uint64_t bytes);
    void dropLatest(std::uint64_t bytes);

    // Whether everything is taken and the file has grown enough to begin another one.
    [[nodiscard]] bool spent();
    // Begins another file; `settle` is called once it is there, before the old one goes,
    // and nothing is kept meanwhile.
    template <typename Settle>
    void beginAnew(const std::filesystem::path& file, Settle&& settle) {
        const std::lock_guard lock(mutex_);
        if (untaken() > 0) return;
        std::filesystem::path old = file_;
        open(file, std::ios::trunc);
        settle();
        pieces_.clear();
        rest_ = 0;
        end_ = 0;
        std::error_code ignored;
        std::filesystem::remove(old, ignored);
    }

private:
    // Bytes one after another: `size` of them for batches, `kept` in the file. The two differ
    // where the disk was full (none kept) or the latest were dropped (no size).
    struct Piece {
        std::uint64_t size;
        std::uint64_t kept;
    };

    void open(const std::filesystem::path& file, std::ios::openmode how);
    [[nodiscard]] std::uint64_t untaken() const;
    [[nodiscard]] std::string read(std::uint64_t from, std::uint64_t to) const;

    std::mutex mutex_;
    std::filesystem::path file_;
    std::ofstream stream_;
    std::deque<Piece> pieces_;   // what nobody has taken
    std::uint64_t rest_ = 0;     // where that begins in the file
    std::uint64_t end_ = 0;      // of the file
    std::uint64_t earlier_ = 0;  // how much of it a run before has left
};

}  // namespace kalvo
