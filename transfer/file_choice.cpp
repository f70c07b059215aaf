#include "transfer/file_choice.h"

#include <filesystem>

namespace kalvo {

std::string temporaryFolder(std::string_view applicationFolder) {
    if (applicationFolder.size() >= 2 && applicationFolder[1] == ':')
        return std::string(applicationFolder.substr(0, 2)) + "\\TEMP";
    return std::filesystem::temp_directory_path().string();
}

}  // namespace kalvo
