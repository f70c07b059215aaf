// Putting a finished file in its place, so that neither a crash nor a power cut
// shows a half-written one. The one part of this folder that differs by system.
#pragma once

#include <filesystem>

namespace kalvo {

// Gives `from` the name `to`, in the same folder, durably. False, with nothing
// changed, when `to` exists. RuntimeError 3043 on a disk error.
[[nodiscard]] bool placeNewFile(const std::filesystem::path& from, const std::filesystem::path& to);

// The same in place of whatever file was there: at every moment `to` is the old
// file or the new one.
void replaceFile(const std::filesystem::path& from, const std::filesystem::path& to);

// Returns when the file's content is on the disk. RuntimeError 3043 if it cannot be.
void flushFile(const std::filesystem::path& file);

}  // namespace kalvo
