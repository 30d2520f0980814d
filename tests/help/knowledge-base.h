#pragma once

#include <QJsonObject>
#include <QNetworkProxy>
#include <QProcess>
#include <QSslConfiguration>
#include <QUrl>

/**
 * A server on this machine that answers under the name of the kit's knowledge base: through a proxy of this
 * process, and with certificates of an authority that this process trusts meanwhile.
 */
class KnowledgeBase
{
public:
    KnowledgeBase();
    ~KnowledgeBase();

    /** Leads requests to the server that shows the certificate "good" or "unknown". */
    void useCertificate(const QString& name) const;

    /** No proxy any more. */
    static void goDirectly();

    static QUrl url(const QString& path);

    /** Lets the answers go that wait for @p turn. */
    static void take(const QString& turn);

    /** A port of this machine that nobody listens on. */
    static quint16 closedPort();

private:
    QProcess server;
    QJsonObject proxies;
    QSslConfiguration before = QSslConfiguration::defaultConfiguration();
};
