// The password dialog frmLogin.
#pragma once

#include <QDialog>

#include "editor/access_lock.h"
#include "platform/platform.h"

class QLineEdit;

namespace kalvo {

// exec() ends with Accepted once the password was right; the access level is then set.
class LoginWindow : public QDialog {
public:
    LoginWindow(const Platform& platform, AccessLock& lock);

private:
    void check();

    Platform platform_;
    AccessLock& lock_;
    QLineEdit* txtPassword;
};

}  // namespace kalvo
