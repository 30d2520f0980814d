#pragma once

#include <QString>

#include <optional>

namespace vantkit::internal {

/** The names under which the processes of one application and one login session meet. */
struct LocalPeerNames
{
    QString id; ///< of the application
    QString socketName; ///< for QLocalServer
    QString lockFile; ///< path

    /**
     * An empty @p appId stands for the program's own path. Without a @p session the names
     * are those of all sessions.
     */
    static LocalPeerNames of(const QString& appId, std::optional<quint32> session);
};

} // namespace vantkit::internal
