#include "platform/sqlite/reception_flow.h"

#include <algorithm>
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
    end_ = error ? 0 : size;
    rest_ = std::min(taken, end_);
    earlier_ = end_ - rest_;
    pieces_.push_back({earlier_, earlier_});
}

void ReceptionFlow::open(const std::filesystem::path& file, std::ios::openmode how) {
    stream_ = std::ofstream();
    // Without a buffer of its own: what a full disk refuses must not come late.
    stream_.rdbuf()->pubsetbuf(nullptr, 0);
    stream_.open(file, std::ios::binary | how);
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
        std::uint64_t kept = bytes.size();
        if (!stream_) {
            // On a full disk the batch itself still goes through memory.
            stream_.clear();
            std::error_code error;
            const auto size = std::filesystem::file_size(file_, error);
            kept = error || size < end_ ? 0 : std::min<std::uint64_t>(size - end_, bytes.size());
        }
        end_ += kept;
        Piece& last = pieces_.empty() ? pieces_.emplace_back(Piece{}) : pieces_.back();
        if (last.size == last.kept) {
            last.size += kept;
            last.kept += kept;
        } else if (kept > 0) {
            pieces_.push_back({kept, kept});
        }
        if (kept < bytes.size()) pieces_.push_back({bytes.size() - kept, 0});
    } catch (const std::exception&) {
        // As on a full disk.
    }
}

std::string ReceptionFlow::read(std::uint64_t from, std::uint64_t to) const {
    std::string bytes(to - from, '\0');
    std::ifstream file(file_, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(from));
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

std::string ReceptionFlow::earlier() {
    const std::lock_guard lock(mutex_);
    return earlier_ == 0 ? std::string() : read(rest_, rest_ + earlier_);
}

std::uint64_t ReceptionFlow::restAfter(std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    std::uint64_t rest = rest_;
    for (const Piece& piece : pieces_) {
        if (piece.size > bytes) return rest + std::min(bytes, piece.kept);
        bytes -= piece.size;
        rest += piece.kept;
    }
    return rest;
}

void ReceptionFlow::take(std::uint64_t bytes) {
    const std::uint64_t rest = restAfter(bytes);
    const std::lock_guard lock(mutex_);
    rest_ = rest;
    earlier_ -= std::min(bytes, earlier_);
    while (!pieces_.empty() && pieces_.front().size <= bytes) {
        bytes -= pieces_.front().size;
        pieces_.pop_front();
    }
    if (pieces_.empty()) return;
    pieces_.front().size -= bytes;
    pieces_.front().kept -= std::min(bytes, pieces_.front().kept);
}

std::string ReceptionFlow::latest(std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    std::uint64_t kept = 0;
    for (auto piece = pieces_.rbegin(); piece != pieces_.rend() && bytes > 0; ++piece) {
        const std::uint64_t part = std::min(bytes, piece->size);
        kept += std::min(part, piece->kept);
        bytes -= part;
    }
    return read(end_ - kept, end_);
}

void ReceptionFlow::dropLatest(std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    std::uint64_t kept = 0;
    while (bytes > 0 && !pieces_.empty()) {
        Piece& last = pieces_.back();
        const std::uint64_t part = std::min(bytes, last.size);
        const std::uint64_t partKept = std::min(part, last.kept);
        bytes -= part;
        kept += partKept;
        last.size -= part;
        last.kept -= partKept;
        if (last.size == 0) {
            kept += last.kept;
            pieces_.pop_back();
        }
    }
    if (kept > 0) pieces_.push_back({0, kept});
}

std::uint64_t ReceptionFlow::untaken() const {
    std::uint64_t size = 0;
    for (const Piece& piece : pieces_) size += piece.size;
    return size;
}

bool ReceptionFlow::spent() {
    const std::lock_guard lock(mutex_);
    return untaken() == 0 && end_ >= kLargeEnough;
}

}  // namespace kalvo
