#pragma once

class QNetworkAccessManager;
class QObject;

namespace vantkit::internal {

/**
 * Has @p slot of @p receiver take each finished reply of @p manager, in a turn of its own of the event loop:
 * what an application does then may destroy the receiver, and with it the manager, which must not be in the
 * middle of its signal.
 */
void receiveReplies(QNetworkAccessManager* manager, QObject* receiver, const char* slot);

} // namespace vantkit::internal
