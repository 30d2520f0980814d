#pragma once

#include <QByteArray>
#include <QString>

namespace vantkit::internal {

/** UTF-8 text up to the first NUL byte, which is how the kit reads every text file. */
inline QString textUpToNul(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData());
}

} // namespace vantkit::internal
