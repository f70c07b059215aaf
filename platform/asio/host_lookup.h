// The addresses behind a host's name.
#pragma once

#include <asio/error_code.hpp>
#include <asio/ip/tcp.hpp>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kalvo {

struct HostAnswer {
    std::vector<asio::ip::tcp::endpoint> places;
    asio::error_code error;  // why there are none
};

// Who knows the addresses of a host and its port; may take long.
using HostResolver = std::function<HostAnswer(const std::string& host, const std::string& port)>;
[[nodiscard]] HostAnswer resolveHost(const std::string& host, const std::string& port);

// Nothing when the answer takes longer than `most`. A resolver cannot be hurried: it works on
// a thread of its own, once for all who ask meanwhile, and a late answer serves the next.
[[nodiscard]] std::optional<HostAnswer> lookUpHost(const std::string& host, const std::string& port,
                                                   std::chrono::milliseconds most,
                                                   const HostResolver& resolve = resolveHost);

}  // namespace kalvo
