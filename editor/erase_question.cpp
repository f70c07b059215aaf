#include "editor/erase_question.h"

#include "platform/serial_port.h"

namespace kalvo {

namespace {

// ESC "1*" ESC CR LF: the terminal drops what it has delivered.
constexpr std::string_view kEraseCommand =
    "\x1B"
    "1*\x1B\r\n";

}  // namespace

void answerEraseQuestion(const Platform& platform, EraseQuestion& question, bool erase) {
    if (erase) platform.port.Output(kEraseCommand);
    question.pending = 0;
}

}  // namespace kalvo
