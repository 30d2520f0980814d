#include "qtsingleapplication/src/local-peer-names_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegExp>

namespace vantkit::internal {

namespace {

QString lettersOf(QString text)
{
    return text.remove(QRegExp(QStringLiteral("[^a-zA-Z]"))).left(6);
}

QString checksumOf(const QString& id)
{
    const QByteArray bytes = id.toUtf8();
    return QString::number(qChecksum(bytes.constData(), static_cast<uint>(bytes.size())), 16);
}

} // namespace

LocalPeerNames LocalPeerNames::of(const QString& appId, std::optional<quint32> session)
{
    LocalPeerNames names;
    names.id = appId;
    QString prefix = appId;
    if (appId.isEmpty()) {
        names.id = QCoreApplication::applicationFilePath().toLower();
        prefix = names.id.section(QLatin1Char('/'), -1);
    }
    names.socketName =
        QStringLiteral("qtsingleapp-") + lettersOf(prefix) + QLatin1Char('-') + checksumOf(names.id);
    if (session) {
        names.socketName += QLatin1Char('-') + QString::number(*session, 16);
    }
    names.lockFile = QDir(QDir::tempPath()).absolutePath() + QLatin1Char('/') + names.socketName
        + QStringLiteral("-lockfile");
    return names;
}

} // namespace vantkit::internal
