#include "platform/qt/single_instance.h"

#include <QDir>
#include <QStandardPaths>
#include <QString>

namespace kalvo {

namespace {

QString lockFolder() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QDir::tempPath() : runtime;
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
