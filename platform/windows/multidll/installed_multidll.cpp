#include "platform/windows/multidll/installed_multidll.h"

#include <windows.h>

#include <array>
#include <fstream>
#include <system_error>
#include <utility>

#include "platform/shared/multidll_functions.h"
#include "platform/shared/multidll_messages.h"
#include "platform/windows/file_handle.h"
#include "platform/windows/multidll/multidll_library.h"
#include "platform/windows/multidll/pipe_stream.h"
#include "platform/windows/wide_text.h"

namespace kalvo {

namespace {

constexpr const wchar_t* kLibrary = L"Multidll.dll";
constexpr const wchar_t* kServer = L"kalvo-multidll32.exe";
constexpr DWORD kTimeToEnd = 2000;  // milliseconds

std::filesystem::path programFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

// By the header of the file: the place of its second part is at 0x3C, the machine 4 bytes
// into that.
bool isFor32Bits(const std::filesystem::path& library) {
    constexpr std::uint32_t kI386 = 0x14C;
    std::ifstream file(library, std::ios::binary);
    const auto word = [&](std::streamoff place, int bytes) {
        std::array<char, 4> read{};
        file.seekg(place).read(read.data(), bytes);
        std::uint32_t value = 0;
        for (std::size_t i = read.size(); i-- > 0;)
            value = value << 8U | static_cast<unsigned char>(read[i]);
        return value;
    };
    const std::uint32_t machine = word(std::streamoff{word(0x3C, 4)} + 4, 2);
    return file && machine == kI386;
}

// One direction: what the other process has of it is inherited, and closed here.
struct Pipe {
    FileHandle read;
    FileHandle write;

    Pipe() {
        HANDLE ends[2] = {};
        SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
        if (CreatePipe(&ends[0], &ends[1], &inherited, 0) == 0) throw otherEndGone();
        read.reset(ends[0]);
        write.reset(ends[1]);
    }
};

void keepToOurselves(const FileHandle& end) {
    SetHandleInformation(end.get(), HANDLE_FLAG_INHERIT, 0);
}

// The process that serves. It ends when its input does; one that hangs in the library is
// ended.
class ServerProcess {
public:
    ServerProcess(const std::filesystem::path& server, const std::filesystem::path& library) {
        keepToOurselves(requests_.write);
        keepToOurselves(replies_.read);
        STARTUPINFOW start{};
        start.cb = sizeof(start);
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdInput = requests_.read.get();
        start.hStdOutput = replies_.write.get();
        std::wstring command = L"\"" + server.wstring() + L"\" \"" + library.wstring() + L"\"";
        PROCESS_INFORMATION started{};
        if (CreateProcessW(server.c_str(), command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                           nullptr, nullptr, &start, &started) == 0)
            throw notLoaded(ansiFromWide(library.wstring()),
                            "erreur " + std::to_string(GetLastError()) + ".");
        process_.reset(started.hProcess);
        CloseHandle(started.hThread);
        requests_.read.reset();
        replies_.write.reset();
    }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess() {
        requests_.write.reset();
        if (process_ && WaitForSingleObject(process_.get(), kTimeToEnd) == WAIT_TIMEOUT)
            TerminateProcess(process_.get(), 1);
    }

    [[nodiscard]] MessageStream& stream() { return stream_; }

private:
    Pipe requests_;
    Pipe replies_;
    FileHandle process_;
    PipeStream stream_{replies_.read.get(), requests_.write.get()};
};

struct OwnServer {
    ServerProcess server;
};

class MultidllOfServer : private OwnServer, public ServedMultidll {
public:
    MultidllOfServer(const std::filesystem::path& serving, const std::filesystem::path& library)
        : OwnServer{{serving, library}}, ServedMultidll(server.stream()) {}
};

}  // namespace

std::unique_ptr<Multidll> findMultidllLibrary(const std::string& named) {
    const std::filesystem::path folder = programFolder();
    const std::filesystem::path library =
        named.empty() ? folder / kLibrary : std::filesystem::path(wideFromUtf8(named));
    std::error_code unknown;
    if (named.empty() && !std::filesystem::exists(library, unknown)) return nullptr;
    if (isFor32Bits(library) && std::filesystem::exists(folder / kServer, unknown))
        return serveMultidllLibrary(folder / kServer, library);
    return loadMultidllLibrary(library.wstring());
}

std::unique_ptr<Multidll> serveMultidllLibrary(const std::filesystem::path& server,
                                               const std::filesystem::path& library) {
    return std::make_unique<MultidllOfServer>(server, library);
}

}  // namespace kalvo
