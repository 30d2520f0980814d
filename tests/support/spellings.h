#pragma once

#include <QDir>

/** A folder as a user may write it: on Windows with back slashes, and as a shared folder of this machine. */
inline QStringList spellings(const QString& folder)
{
    const QString native = QDir::toNativeSeparators(folder);
    const QString shared = "\\\\localhost\\" + QString(native).replace(':', '$');
    return QDir::separator() == '/' ? QStringList { folder } : QStringList { native, shared };
}
