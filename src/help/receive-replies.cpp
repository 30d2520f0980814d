#include "help/receive-replies_p.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace vantkit::internal {

void receiveReplies(QNetworkAccessManager* manager, QObject* receiver, const char* slot)
{
    qRegisterMetaType<QNetworkReply*>();
    QObject::connect(manager, SIGNAL(finished(QNetworkReply*)), receiver, slot, Qt::QueuedConnection);
}

} // namespace vantkit::internal
