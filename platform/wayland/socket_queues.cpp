#include "platform/wayland/socket_queues.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>
#include <linux/unix_diag.h>
#include <sys/socket.h>

#include <array>
#include <cstring>
#include <string_view>

#include "platform/shared/file_descriptor.h"

namespace kalvo {

namespace {

constexpr std::uint32_t kEstablished = 1;

bool ask(const FileDescriptor& socket) {
    struct {
        nlmsghdr head;
        unix_diag_req question;
    } request{};
    request.head.nlmsg_len = sizeof request;
    request.head.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.head.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.question.sdiag_family = AF_UNIX;
    request.question.udiag_states = 1U << kEstablished;
    request.question.udiag_show = UDIAG_SHOW_NAME | UDIAG_SHOW_RQLEN;
    return send(socket.number(), &request, sizeof request, 0) == sizeof request;
}

void add(const nlmsghdr& head, std::string_view wanted,
         std::map<std::uint32_t, std::uint32_t>& queues) {
    const auto* const message = static_cast<const unix_diag_msg*>(NLMSG_DATA(&head));
    std::string_view name;
    unix_diag_rqlen length{};
    auto left = static_cast<int>(head.nlmsg_len - NLMSG_LENGTH(sizeof *message));
    const auto* part = reinterpret_cast<const rtattr*>(message + 1);
    for (; RTA_OK(part, left); part = RTA_NEXT(part, left)) {
        const void* const data = RTA_DATA(part);
        if (part->rta_type == UNIX_DIAG_NAME)
            name = {static_cast<const char*>(data), RTA_PAYLOAD(part)};
        else if (part->rta_type == UNIX_DIAG_RQLEN)
            std::memcpy(&length, data, sizeof length);
    }
    while (name.ends_with('\0')) name.remove_suffix(1);
    if (name == wanted) queues[message->udiag_ino] = length.udiag_wqueue;
}

}  // namespace

std::map<std::uint32_t, std::uint32_t> socketQueues(const std::string& name) {
    std::map<std::uint32_t, std::uint32_t> queues;
    if (name.empty()) return queues;
    const FileDescriptor diagnostics(
        socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    if (!ask(diagnostics)) return queues;
    alignas(nlmsghdr) std::array<char, 32768> buffer{};
    for (;;) {
        const ssize_t size = recv(diagnostics.number(), buffer.data(), buffer.size(), 0);
        if (size <= 0) return queues;
        auto left = static_cast<unsigned>(size);
        const auto* head = reinterpret_cast<const nlmsghdr*>(buffer.data());
        for (; NLMSG_OK(head, left); head = NLMSG_NEXT(head, left)) {
            if (head->nlmsg_type == NLMSG_DONE || head->nlmsg_type == NLMSG_ERROR) return queues;
            add(*head, name, queues);
        }
    }
}

}  // namespace kalvo
