#include "platform/sqlite/reception_flow.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace kalvo {

namespace {

constexpr std::uint64_t kLargeEnough = 256U * 1024U;

}  // namespace

ReceptionFlow::ReceptionFlow(std::filesystem::path file, std::uint64_t taken) {
    open(std::move(file), std::ios::app);
    std::error_code error;
    const auto size = std::filesystem::file_size(file_, error);
    size_ = error ? 0 : size;
    taken_ = std::min(taken, size_);
}

void ReceptionFlow::open(const std::filesystem::path& file, std::ios::openmode how) {
    stream_ = std::ofstream(file, std::ios::binary | how);
    file_ = file;
    using std::filesystem::perms;
    std::error_code ignored;
    std::filesystem::permissions(file_, perms::owner_read | perms::owner_write, ignored);
}

void ReceptionFlow::keep(std::string_view bytes) noexcept {
    try {
        const std::lock_guard lock(mutex_);
        stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        stream_.flush();
        if (!stream_) {
            // On a full disk the batch itself still goes through memory.
            stream_.clear();
            std::error_code error;
            const auto size = std::filesystem::file_size(file_, error);
            size_ = error ? size_ : size;
            return;
        }
        size_ += bytes.size();
    } catch (const std::exception&) {
        // As on a full disk.
    }
}

std::string ReceptionFlow::rest() {
    const std::lock_guard lock(mutex_);
    std::ifstream file(file_, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(taken_));
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void ReceptionFlow::take(std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    taken_ = std::min(taken_ + bytes, size_);
}

bool ReceptionFlow::spent() {
    const std::lock_guard lock(mutex_);
    return taken_ == size_ && size_ >= kLargeEnough;
}

}  // namespace kalvo
