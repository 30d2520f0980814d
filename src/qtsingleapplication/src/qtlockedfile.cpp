#include "qtsingleapplication/src/qtlockedfile.h"

#include <QtDebug>

namespace QtLP_Private {

QtLockedFile::QtLockedFile() = default;

QtLockedFile::QtLockedFile(const QString& name)
    : QFile(name)
{ }

bool QtLockedFile::open(QIODevice::OpenMode mode)
{
    if (mode & QIODevice::Truncate) {
        qWarning("QtLockedFile::open(): Truncate mode not allowed.");
        return false;
    }
    return QFile::open(mode);
}

bool QtLockedFile::isLocked() const
{
    return currentLockMode != NoLock;
}

QtLockedFile::LockMode QtLockedFile::lockMode() const
{
    return currentLockMode;
}

} // namespace QtLP_Private
