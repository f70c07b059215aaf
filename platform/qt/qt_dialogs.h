// Message boxes, input boxes and the file dialog as windows.
#pragma once

#include "platform/dialogs.h"

namespace kalvo {

// Modal to the whole program; object names are frmMessage, frmSaisie, frmOuvrir
// and frmEnregistrer.
class QtDialogs : public Dialogs {
public:
    void message(std::string_view text, std::string_view title, MessageIcon icon) override;
    bool confirm(std::string_view text, std::string_view title, MessageIcon icon) override;
    std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                        std::string_view defaultText) override;
    std::string openFile(std::string_view startFolder, std::string_view filter) override;
    std::string saveFile(std::string_view name, std::string_view filter) override;
    void beep() override;
};

}  // namespace kalvo
