#pragma once

class QLocalServer;
class QString;

namespace vantkit::internal {

/**
 * Has a local server listen, to this user alone. The name of one that ended without giving it back is free;
 * one that somebody listens on, or that is another user's, is left alone.
 */
bool listenForUser(QLocalServer& server, const QString& name);

} // namespace vantkit::internal
