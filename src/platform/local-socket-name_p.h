#pragma once

class QString;

namespace vantkit::internal {

/**
 * Frees the name of a local server that has ended without giving it back. A name that somebody
 * listens on, and one of another user, are left alone. On Windows a name goes with its server,
 * and there is nothing to do.
 */
void freeDeadLocalSocketName(const QString& name);

} // namespace vantkit::internal
