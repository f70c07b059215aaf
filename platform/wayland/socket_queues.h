// How much the clients of a local socket have still to read.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace kalvo {

// Bytes that wait in each connection of the server that listens on the socket of that name,
// by the connection's inode number, as the kernel counts them. Empty when the system does
// not tell.
[[nodiscard]] std::map<std::uint32_t, std::uint32_t> socketQueues(const std::string& name);

}  // namespace kalvo
