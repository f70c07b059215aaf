#include "platform/asio/host_lookup.h"

#include <asio/io_context.hpp>
#include <future>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace kalvo {

namespace {

struct Lookups {
    std::mutex mutex;
    std::map<std::string, std::shared_future<HostAnswer>> running;
};

Lookups& lookups() {
    static Lookups all;
    return all;
}

}  // namespace

HostAnswer resolveHost(const std::string& host, const std::string& port) {
    asio::io_context io;
    HostAnswer answer;
    for (const auto& found : asio::ip::tcp::resolver(io).resolve(host, port, answer.error))
        answer.places.push_back(found.endpoint());
    return answer;
}

std::optional<HostAnswer> lookUpHost(const std::string& host, const std::string& port,
                                     std::chrono::milliseconds most, const HostResolver& resolve) {
    Lookups& all = lookups();
    const std::string place = host + ":" + port;
    std::shared_future<HostAnswer> answer;
    {
        const std::lock_guard lock(all.mutex);
        std::shared_future<HostAnswer>& running = all.running[place];
        if (!running.valid()) {
            std::packaged_task<HostAnswer()> task([=] { return resolve(host, port); });
            auto future = task.get_future().share();
            std::thread(std::move(task)).detach();
            running = std::move(future);
        }
        answer = running;
    }
    if (answer.wait_for(most) != std::future_status::ready) return std::nullopt;
    const std::lock_guard lock(all.mutex);
    all.running.erase(place);
    return answer.get();
}

}  // namespace kalvo
