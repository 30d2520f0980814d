#include "knowledge-base.h"

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslCertificate>
#include <QTcpServer>
#include <QTest>

namespace {

QString host()
{
    return QUrl(QStringLiteral(KNOWLEDGE_BASE_URL)).host();
}

} // namespace

// The interpreter of the system is the one that has the packages of the system.
KnowledgeBase::KnowledgeBase()
{
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.start(QStringLiteral("/usr/bin/python3"),
        { QStringLiteral("-B"), QStringLiteral(KNOWLEDGE_BASE_SERVER), host() });
    while (!server.canReadLine()) {
        if (!server.waitForReadyRead()) {
            qFatal("The server does not start");
        }
    }
    const QJsonObject started = QJsonDocument::fromJson(server.readLine()).object();
    proxies = started.value(QStringLiteral("proxies")).toObject();
    QSslConfiguration trusting = before;
    trusting.setCaCertificates(before.caCertificates()
        + QSslCertificate::fromData(started.value(QStringLiteral("authority")).toString().toLatin1()));
    QSslConfiguration::setDefaultConfiguration(trusting);
}

KnowledgeBase::~KnowledgeBase()
{
    goDirectly();
    QSslConfiguration::setDefaultConfiguration(before);
    server.closeWriteChannel();
    server.waitForFinished();
}

void KnowledgeBase::useCertificate(const QString& name) const
{
    const auto port = static_cast<quint16>(proxies.value(name).toInt());
    QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), port });
}

void KnowledgeBase::goDirectly()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

QUrl KnowledgeBase::url(const QString& path)
{
    QUrl url(QStringLiteral(KNOWLEDGE_BASE_URL));
    url.setPath(path);
    return url;
}

void KnowledgeBase::take(const QString& turn)
{
    QNetworkAccessManager manager;
    const QNetworkReply* reply = manager.get(QNetworkRequest(url(QStringLiteral("/take/") + turn)));
    QTRY_VERIFY(reply->isFinished());
    QCOMPARE(reply->error(), QNetworkReply::NoError);
}

quint16 KnowledgeBase::closedPort()
{
    QTcpServer listener;
    listener.listen(QHostAddress::LocalHost);
    return listener.serverPort();
}
