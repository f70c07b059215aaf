#include "app/process/process_start.h"

namespace kalvo {

std::vector<std::string> beginProcess(int argc, char** argv) { return {argv + 1, argv + argc}; }

}  // namespace kalvo
