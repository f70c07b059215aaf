// The other end of the messages: a library that is loaded here, served to another process.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/multidll.h"
#include "platform/shared/multidll_messages.h"

namespace kalvo {

// Answers requests with the functions of a library.
class MultidllServer {
public:
    explicit MultidllServer(Multidll& library) : library_(library) {}

    // The reply to a request; an empty one to a function that does not exist.
    [[nodiscard]] std::string answer(std::string request) {
        MessageReader in(std::move(request));
        MessageWriter out;
        const auto function = static_cast<MultidllCall>(in.number());
        callLine(function, in, out);
        callTransfer(function, in, out);
        callParameter(function, in, out);
        return out.bytes();
    }

private:
    struct Target {
        explicit Target(MessageReader& in) : port(in.number()), terminal(in.character()) {}
        std::int32_t port;
        char terminal;
    };

    void callLine(MultidllCall function, MessageReader& in, MessageWriter& out) {
        switch (function) {
            case MultidllCall::kOpenCommPort: {
                std::array<std::int32_t, 5> line{};
                for (std::int32_t& value : line) value = in.number();
                out.add(library_.HM_OpenCommPort(line[0], line[1], line[2], line[3], line[4]));
                break;
            }
            case MultidllCall::kCloseCommPort:
                out.add(library_.HM_CloseCommPort(in.number()));
                break;
            case MultidllCall::kFileExist: {
                const Target target(in);
                out.add(library_.HM_file_exist(target.port, target.terminal, in.text()));
                break;
            }
            case MultidllCall::kPowerSavingOff: {
                const Target target(in);
                out.add(library_.HM_power_saving_off(target.port, target.terminal));
                break;
            }
            case MultidllCall::kPowerSavingOn: {
                const Target target(in);
                out.add(library_.HM_power_saving_on(target.port, target.terminal));
                break;
            }
            default: break;
        }
    }

    void callTransfer(MultidllCall function, MessageReader& in, MessageWriter& out) {
        switch (function) {
            case MultidllCall::kUpload1: {
                const Target target(in);
                const std::string remote = in.text();
                out.add(library_.HM_upload1(target.port, target.terminal, remote, in.text()));
                break;
            }
            case MultidllCall::kReturnString: {
                std::array<char, Multidll::kReturnString> text{};
                const std::string before = in.text();
                std::copy_n(before.begin(), std::min(before.size(), text.size()), text.begin());
                out.add(library_.HM_get_return_string_length(text));
                out.add(std::string_view(text.data(), text.size()));
                break;
            }
            case MultidllCall::kDownload1: {
                const Target target(in);
                const std::string local = in.text();
                const std::string remote = in.text();
                std::int32_t size = in.number();
                out.add(library_.HM_download1(target.port, target.terminal, local, remote, size));
                out.add(size);
                break;
            }
            case MultidllCall::kUpload2:
            case MultidllCall::kDownload2: {
                std::int32_t bytes = in.number();
                std::int32_t packets = in.number();
                out.add(function == MultidllCall::kUpload2 ? library_.HM_upload2(bytes, packets)
                                                           : library_.HM_download2(bytes, packets));
                out.add(bytes).add(packets);
                break;
            }
            default: break;
        }
    }

    void callParameter(MultidllCall function, MessageReader& in, MessageWriter& out) {
        switch (function) {
            case MultidllCall::kSetEscDelay: library_.HM_set_ESC_delay(in.number()); break;
            case MultidllCall::kSetNakDelay: library_.HM_set_NAK_delay(in.number()); break;
            case MultidllCall::kSetTimeOut: library_.HM_set_time_out(in.number()); break;
            case MultidllCall::kGetEscDelay: out.add(library_.HM_get_ESC_delay()); break;
            case MultidllCall::kGetNakDelay: out.add(library_.HM_get_NAK_delay()); break;
            case MultidllCall::kGetTimeOut: out.add(library_.HM_get_time_out()); break;
            case MultidllCall::kVersion: out.add(library_.HM_version()); break;
            default: break;
        }
    }

    Multidll& library_;
};

}  // namespace kalvo
