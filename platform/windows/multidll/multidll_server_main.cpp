// kalvo-multidll32 LIBRARY: loads a communication library that a program of 64 bits cannot
// load, and serves its functions over the standard input and output until the input ends.
#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>

#include "platform/shared/multidll_server.h"
#include "platform/windows/multidll/multidll_library.h"
#include "platform/windows/multidll/pipe_stream.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Whatever the library itself prints must not get into the messages.
PipeStream takeStandardStreams() {
    const PipeStream stream(GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE));
    SetStdHandle(STD_INPUT_HANDLE, nullptr);
    SetStdHandle(STD_OUTPUT_HANDLE, nullptr);
    return stream;
}

std::unique_ptr<Multidll> load(MessageStream& stream, const std::wstring& path) {
    std::unique_ptr<Multidll> library;
    MessageWriter greeting;
    try {
        library = loadMultidllLibrary(path);
        greeting.add(std::int32_t{0}).add(std::string_view());
    } catch (const RuntimeError& error) {
        greeting.add(std::int32_t{error.number()}).add(error.description());
    }
    stream.send(greeting.bytes());
    return library;
}

int serve(const std::wstring& path) {
    PipeStream stream = takeStandardStreams();
    try {
        const auto library = load(stream, path);
        if (library == nullptr) return 1;
        for (MultidllServer server(*library);;) stream.send(server.answer(stream.receive()));
    } catch (const RuntimeError&) {
        return 0;  // whoever asked has gone
    }
}

}  // namespace

}  // namespace kalvo

int main() {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    return count == 2 ? kalvo::serve(words[1]) : 2;
}
