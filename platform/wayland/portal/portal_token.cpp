#include "platform/wayland/portal/portal_token.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace kalvo {

namespace {

QString tokenFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           "/kalvo-horizon/portail-clavier";
}

}  // namespace

QString readPortalToken() {
    QFile file(tokenFile());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void keepPortalToken(const QString& token) {
    if (token.isEmpty()) {
        QFile::remove(tokenFile());
        return;
    }
    QDir().mkpath(QFileInfo(tokenFile()).path());
    QSaveFile file(tokenFile());
    if (!file.open(QIODevice::WriteOnly)) return;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    file.write(token.toUtf8());
    file.commit();
}

}  // namespace kalvo
