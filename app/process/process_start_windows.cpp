#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>

#include "app/process/process_start.h"
#include "platform/windows/wide_text.h"

namespace kalvo {

namespace {

// The console outlives the program and may be another's.
void showUtf8() {
    static const UINT before = GetConsoleOutputCP();
    if (before == 0 || SetConsoleOutputCP(CP_UTF8) == 0) return;
    std::atexit([] { SetConsoleOutputCP(before); });
}

}  // namespace

std::vector<std::string> beginProcess(int /*argc*/, char** /*argv*/) {
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    showUtf8();

    // main() got them in the system's code page, which may lack characters.
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(utf8FromWide(words[i]));
    LocalFree(words);
    return arguments;
}

void restartProcess() {}

long processId() { return static_cast<long>(GetCurrentProcessId()); }

}  // namespace kalvo
