// What is said to and asked of the user.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kalvo {

enum class MessageIcon { kNone, kInformation, kExclamation, kCritical, kQuestion };

// Message boxes, input boxes and the file dialog; texts are code page 1252. The
// desktop program shows them modally, command-line use writes and reads lines.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    // A message with the one button OK.
    virtual void message(std::string_view text, std::string_view title, MessageIcon icon) = 0;

    // A Yes/No question; true for Yes. No is the default button.
    [[nodiscard]] virtual bool confirm(std::string_view text, std::string_view title,
                                       MessageIcon icon) = 0;

    // One line of text, which may be empty; nothing when the user cancels.
    [[nodiscard]] virtual std::optional<std::string> inputBox(std::string_view prompt,
                                                              std::string_view title,
                                                              std::string_view defaultText) = 0;

    // An open-file dialog; the chosen path, empty when the user cancels. `filter`
    // is "label|pattern|label|pattern".
    [[nodiscard]] virtual std::string openFile(std::string_view startFolder,
                                               std::string_view filter) = 0;

    // A save-file dialog that starts with a name; the chosen path, empty when the user
    // cancels. Whoever writes to a path that exists has been asked.
    [[nodiscard]] virtual std::string saveFile(std::string_view name, std::string_view filter) = 0;

    // The system's short sound.
    virtual void beep() = 0;
};

}  // namespace kalvo
