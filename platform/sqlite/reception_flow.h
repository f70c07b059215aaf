// What the line has brought and no batch holds yet, in a plain file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace kalvo {

// Appended to byte by byte as the line delivers, so that the end of the program loses
// nothing that has come in. The front of it is taken over by batches; where the rest
// begins is kept by whoever keeps the batches.
class ReceptionFlow {
public:
    // Goes on with a file of a run before, or begins one. `taken`: bytes at its front that
    // batches have.
    ReceptionFlow(std::filesystem::path file, std::uint64_t taken);

    // Adds bytes. Other threads may call it.
    void keep(std::string_view bytes) noexcept;
    // What no batch has taken, in order.
    [[nodiscard]] std::string rest();

    // A batch has taken the next bytes.
    void take(std::uint64_t bytes);
    [[nodiscard]] std::uint64_t taken() const { return taken_; }

    // Whether everything is taken and the file has grown enough to begin another one.
    [[nodiscard]] bool spent();
    // Begins another file; `settle` is called once it is there, before the old one goes,
    // and nothing is kept meanwhile.
    template <typename Settle>
    void beginAnew(const std::filesystem::path& file, Settle&& settle) {
        const std::lock_guard lock(mutex_);
        if (taken_ < size_) return;
        std::filesystem::path old = file_;
        open(file, std::ios::trunc);
        settle();
        size_ = 0;
        taken_ = 0;
        std::error_code ignored;
        std::filesystem::remove(old, ignored);
    }

private:
    void open(const std::filesystem::path& file, std::ios::openmode how);

    std::mutex mutex_;
    std::filesystem::path file_;
    std::ofstream stream_;
    std::uint64_t size_ = 0;
    std::uint64_t taken_ = 0;
};

}  // namespace kalvo
