#include "platform/x11/held/real_keyboards.h"

#include <xcb/xinput.h>

#include "platform/x11/held/key_bits.h"

namespace kalvo {

std::vector<std::uint8_t> realKeyboards(const X11Connection& connection) {
    std::vector<std::uint8_t> found;
    const XReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection.get(), xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL),
        nullptr));
    if (!devices) return found;
    for (auto at = xcb_input_xi_query_device_infos_iterator(devices.get()); at.rem > 0;
         xcb_input_xi_device_info_next(&at))
        if (at.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
            at.data->attachment == connection.coreKeyboard() &&
            at.data->deviceid != connection.xtestKeyboard() && at.data->deviceid < 128)
            found.push_back(static_cast<std::uint8_t>(at.data->deviceid));
    return found;
}

std::bitset<256> keysDown(const X11Connection& connection,
                          const std::vector<std::uint8_t>& keyboards) {
    std::bitset<256> down;
    for (const std::uint8_t keyboard : keyboards) {
        const XReply<xcb_input_query_device_state_reply_t> state(xcb_input_query_device_state_reply(
            connection.get(), xcb_input_query_device_state(connection.get(), keyboard), nullptr));
        if (!state) continue;
        for (auto at = xcb_input_query_device_state_classes_iterator(state.get()); at.rem > 0;
             xcb_input_input_state_next(&at))
            if (at.data->class_id == XCB_INPUT_INPUT_CLASS_KEY)
                down |= toKeys(reinterpret_cast<const xcb_input_key_state_t*>(at.data)->keys);
    }
    return down;
}

}  // namespace kalvo
