#include "platform/qt/single_instance.h"

#include <QDir>
#include <QStandardPaths>
#include <QString>

namespace kalvo {

namespace {

// A folder that only the user can write to: in one of all users, anybody could keep the
// program from starting. The session's own is none when it belongs to another.
QString lockFolder() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty()) return runtime;
    const QString data =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/kalvo-horizon";
    QDir().mkpath(data);
    return data;
}

}  // namespace

SingleInstance::SingleInstance() : lock_(lockFolder() + "/kalvo-horizon.lock") {
    // However long it has been running, an instance that lives is no stale one.
    lock_.setStaleLockTime(0);
    const bool held = lock_.tryLock(0);
    // Where no lock can be written at all, the program works all the same.
    first_ = held || lock_.error() != QLockFile::LockFailedError;
}

}  // namespace kalvo
