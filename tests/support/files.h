#pragma once

#include <QDir>
#include <QFile>

/** The files that a test makes and reads. */
namespace files {

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** With the folders on the way. */
inline void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!QFileInfo(path).dir().mkpath(".") || !file.open(QIODevice::WriteOnly)
        || file.write(bytes) != bytes.size()) {
        qFatal("Cannot write %s", qUtf8Printable(path));
    }
}

} // namespace files
