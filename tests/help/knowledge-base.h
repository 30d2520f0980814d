#pragma once

#include "known-authority.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUrl>

#include <optional>

/**
 * A server on this machine that answers under the name of the kit's knowledge base: through a proxy of this
 * process, and with certificates of an authority that this process trusts.
 */
class KnowledgeBase
{
public:
    // The interpreter of the system is the one that has the packages of the system. Wine starts it as well,
    // but gives it no pipes.
    KnowledgeBase()
    {
        listener.listen(QHostAddress::LocalHost);
        QProcess::startDetached("/usr/bin/python3",
            { "-B", KNOWLEDGE_BASE_SERVER, url({}).host(), QString::number(listener.serverPort()) });
        listener.waitForNewConnection(30000);
        server = listener.nextPendingConnection();
        awaitRequest();
        const QJsonObject started = QJsonDocument::fromJson(line).object();
        proxies = started["proxies"].toObject();
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates(QSslCertificate::fromData(started["authority"].toString().toLatin1()));
        QSslConfiguration::setDefaultConfiguration(trusting);
        known.emplace(trusting.caCertificates().value(0).toDer());
    }

    /** Leads requests to the server that shows the certificate "good" or "unknown". */
    void useCertificate(const QString& name) const
    {
        const auto port = quint16(proxies[name].toInt());
        QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, "127.0.0.1", port });
    }

    static QUrl url(const QString& path) { return QUrl(KNOWLEDGE_BASE_URL).resolved(QUrl(path)); }

    /** Until one more request for a path of the form "after-TURN" has reached the server. */
    void awaitRequest()
    {
        QTRY_VERIFY_WITH_TIMEOUT(server->canReadLine(), 30000);
        line = server->readLine();
    }

    /** Lets one of the requests go that wait for @p turn. */
    void take(const QByteArray& turn) { server->write(turn + '\n'); }

private:
    QTcpServer listener;
    QTcpSocket* server; ///< of the listener; the other side ends with it
    QByteArray line; ///< what it has written last
    QJsonObject proxies;
    std::optional<KnownAuthority> known;
};
