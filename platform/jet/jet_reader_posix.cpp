#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "platform/file_descriptor.h"
#include "platform/jet/jet_child.h"
#include "platform/jet/jet_error.h"
#include "platform/jet/jet_signature.h"
#include "platform/jet/jet_stream.h"
#include "platform/jet/jet_tables.h"
#include "platform/sqlite/database_path.h"
#include "platform/sqlite/sqlite_error.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

using Clock = std::chrono::steady_clock;

// More than any scenario database holds; a reader that sends more has gone astray.
constexpr std::size_t kMaxStream = std::size_t{256} * 1024 * 1024;
constexpr rlim_t kMaxExtraMemory = rlim_t{1024} * 1024 * 1024;

// The reading process, killed and reaped at the latest here.
class Child {
public:
    explicit Child(pid_t pid) : pid_(pid) {}
    ~Child() {
        kill(pid_, SIGKILL);
        while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

private:
    pid_t pid_;
};

void limitResource(int resource, rlim_t value) {
    const rlimit limit{value, value};
    setrlimit(static_cast<__rlimit_resource>(resource), &limit);
}

// A loop or a length gone wild ends this process, not the machine.
void limitProcess(std::chrono::milliseconds timeLimit) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(timeLimit).count() + 1;
    limitResource(RLIMIT_CPU, static_cast<rlim_t>(seconds));
    limitResource(RLIMIT_CORE, 0);
    rlim_t pages = 0;
    if (std::ifstream("/proc/self/statm") >> pages)
        limitResource(RLIMIT_AS,
                      pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + kMaxExtraMemory);
}

// The library speaks on its standard outputs and listens to the environment.
void quietLibrary() {
    const int null = open("/dev/null", O_RDWR);
    dup2(null, STDOUT_FILENO);
    dup2(null, STDERR_FILENO);
    std::setlocale(LC_ALL, "C");
    setenv("MDBICONV", "UTF-8", 1);
    unsetenv("MDBOPTS");
    unsetenv("MDB_JET3_CHARSET");
}

[[noreturn]] void runChild(const std::filesystem::path& file, int output,
                           std::chrono::milliseconds timeLimit) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGTERM, SIGPIPE})
        std::signal(signal, SIG_DFL);
    limitProcess(timeLimit);
    quietLibrary();
    std::FILE* stream = fdopen(output, "wb");
    if (stream == nullptr) _exit(1);
    JetStreamWriter writer(stream);
    streamJetTables(file, writer);
    _exit(0);
}

// Everything the process writes until it closes its end; cut at the time limit.
std::string readUntilClosed(int input, Clock::time_point deadline) {
    std::string received;
    std::array<char, 65536> buffer{};
    while (received.size() < kMaxStream) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd ready{input, POLLIN, 0};
        const int count = left <= 0 ? 0 : poll(&ready, 1, static_cast<int>(left));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        const ssize_t size = read(input, buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) break;
        received.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return received;
}

std::string streamFromChild(const std::filesystem::path& file, std::chrono::milliseconds limit) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw diskError(shownName(file));
    const FileDescriptor input(ends[0]);
    FileDescriptor output(ends[1]);
    const pid_t pid = fork();
    if (pid < 0) throw diskError(shownName(file));
    if (pid == 0) runChild(file, output.number(), limit);
    const Child child(pid);
    output.close();
    return readUntilClosed(input.number(), Clock::now() + limit);
}

void checkWholePages(const std::filesystem::path& file) {
    const JetVersion version = jetVersionOf(file);
    std::error_code error;
    if (version == JetVersion::kNone ||
        std::filesystem::file_size(file, error) % jetPageSize(version) != 0)
        throw jetDamaged(shownName(file));
}

}  // namespace

JetTables readJetTables(const std::filesystem::path& file, std::chrono::milliseconds limit) {
    checkWholePages(file);
    auto tables = parseJetStream(streamFromChild(file, limit));
    if (!tables) throw jetDamaged(shownName(file));
    return *std::move(tables);
}

}  // namespace kalvo
