// The password dialog frmLogin.
#pragma once

#include <QDialog>

#include "editor/editor_state.h"
#include "platform/platform.h"

class QLineEdit;

namespace kalvo {

// exec() ends with Accepted once the password was right; the access level is then set.
class LoginWindow : public QDialog {
public:
    LoginWindow(const Platform& platform, EditorState& editor);

private:
    void check();

    Platform platform_;
    EditorState& editor_;
    QLineEdit* txtPassword;
};

}  // namespace kalvo
