// What a program finds when it starts, in the form the core knows.
#pragma once

#include <string>
#include <vector>

namespace kalvo {

// The arguments of main() in UTF-8, without the program's name. From here on the
// standard streams carry bytes, and a console shows them as UTF-8.
[[nodiscard]] std::vector<std::string> beginProcess(int argc, char** argv);

}  // namespace kalvo
