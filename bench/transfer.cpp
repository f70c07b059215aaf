// File transfer over a pseudo-terminal, beside ckermit to ckermit on the same line.
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "platform/asio/asio_transfer_line.h"
#include "platform/linux/linux_file_system.h"
#include "tests/support/temporary_folder.h"
#include "tests/transfer/kermit_server.h"
#include "transfer/kermit/kermit_multidll.h"

namespace {

using namespace kalvo;

constexpr std::size_t kSize = 10000000;

double seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void report(const char* what, double time) {
    std::printf("%-28s %6.2f s %6.1f MB/s\n", what, time, kSize / time / 1e6);
}

// Until the code is another one than "more"; a failure ends the program.
template <typename Step>
void run(KermitMultidll& dll, TransferCode code, Step step) {
    std::int32_t bytes = 0;
    std::int32_t packets = 0;
    if (code == TransferCode::kSuccess) code = TransferCode::kUnsuccessfulOrMore;
    while (code == TransferCode::kUnsuccessfulOrMore) code = (dll.*step)(bytes, packets);
    if (code == TransferCode::kSuccess && bytes == kSize) return;
    std::fprintf(stderr, "transfer failed: %d\n", static_cast<int>(code));
    std::exit(1);
}

}  // namespace

int main() {
    const kalvo::testing::TemporaryFolder remote;
    const kalvo::testing::TemporaryFolder local;
    kalvo::testing::Cable cable;
    const kalvo::testing::KermitServer server(cable.server.path(), remote.path(), "set delay 1");
    std::string content(kSize, '\0');
    unsigned state = 1;
    for (char& byte : content) byte = static_cast<char>((state = state * 1664525U + 1) >> 24U);
    std::ofstream(local / "file", std::ios::binary) << content;

    LinuxFileSystem files;
    {
        AsioTransferLine line([&](int) { return cable.client.path(); });
        KermitMultidll dll(line, files, [] { return false; });
        dll.HM_OpenCommPort(1, 115200, 8, 0, 1);
        if (dll.HM_power_saving_off(1, 'A') != TransferCode::kSuccess) return 1;
        report("this program, to ckermit", seconds([&] {
                   std::int32_t size = 0;
                   run(dll, dll.HM_download1(1, 'A', local / "file", "file", size),
                       &Multidll::HM_download2);
               }));
        report("this program, from ckermit", seconds([&] {
                   run(dll, dll.HM_upload1(1, 'A', "file", local / "got"), &Multidll::HM_upload2);
               }));
    }
    // Its own start is not counted: the same call without a transfer is taken off.
    const auto client = [&](const std::string& transfer) {
        const std::string command =
            "cd " + local.path() + " && timeout 60 kermit -Y -C 'set line " + cable.client.path() +
            ", set carrier-watch off, set speed 115200, set flow none, set transfer mode manual, "
            "set file type binary, set file collision overwrite, " +
            transfer + "exit' </dev/null >/dev/null 2>&1";
        return seconds([&] {
            if (std::system(command.c_str()) != 0) std::exit(1);
        });
    };
    const double start = client("");
    report("ckermit, to ckermit", client("send file, ") - start);
    report("ckermit, from ckermit", client("get file, ") - start);
}
