#include "platform/qt/single_instance.h"

#include <QCoreApplication>
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
    bool held = lock_.tryLock(0);
    // What this very process left behind when it began anew is nobody's.
    if (qint64 holder = 0; !held && lock_.getLockInfo(&holder, nullptr, nullptr) &&
                           holder == QCoreApplication::applicationPid())
        held = lock_.removeStaleLockFile() && lock_.tryLock(0);
    // Where no lock can be written at all, the program works all the same.
    first_ = held || lock_.error() != QLockFile::LockFailedError;
}

}  // namespace kalvo
