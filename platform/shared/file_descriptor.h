// An open file of the system, closed with its owner.
#pragma once

#include <unistd.h>

#include <utility>

namespace kalvo {

class FileDescriptor {
public:
    // Takes over what open() returned; negative means not open.
    explicit FileDescriptor(int number = -1) noexcept : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] bool isOpen() const noexcept { return number_ >= 0; }
    [[nodiscard]] int number() const noexcept { return number_; }

    // False, with errno set, when the system reports a late write error.
    bool close() noexcept { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_;
};

}  // namespace kalvo
