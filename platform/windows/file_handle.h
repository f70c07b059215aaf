// An open file of the system, closed with its owner.
#pragma once

#include <windows.h>

#include <memory>

namespace kalvo {

struct CloseFileHandle {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { CloseHandle(file); }
};
using FileHandle = std::unique_ptr<HANDLE, CloseFileHandle>;

}  // namespace kalvo
