#include "platform/linux/native_path.h"

#include "text/ansi_text.h"
#include "text/path_text.h"

namespace kalvo {

std::string nativePath(std::string_view path) { return toUtf8(posixPath(path)); }

}  // namespace kalvo
