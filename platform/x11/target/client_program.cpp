#include "platform/x11/target/client_program.h"

#include <xcb/res.h>

#include <filesystem>
#include <system_error>

namespace kalvo {

std::string programOf(const X11Connection& connection, xcb_window_t window) {
    xcb_connection_t* const x = connection.get();
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(x, &xcb_res_id);
    if (extension == nullptr || extension->present == 0) return {};
    const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const XReply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(x, xcb_res_query_client_ids(x, 1, &wanted), nullptr));
    if (!reply) return {};
    const auto client = xcb_res_query_client_ids_ids_iterator(reply.get());
    if (client.rem == 0 || xcb_res_client_id_value_value_length(client.data) == 0) return {};
    const auto process = *xcb_res_client_id_value_value(client.data);
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", unknown)
        .string();
}

}  // namespace kalvo
