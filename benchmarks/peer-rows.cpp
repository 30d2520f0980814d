#include "bench.h"
#include "child-process.h"
#include "families.h"
#include "processes/scene-identity.h"
#include "processes/scene.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QDir>
#include <QLocalSocket>
#include <QUrl>
#include <QtEndian>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

namespace bench {

namespace {

const QString clientChild = QStringLiteral("peer-client");

const QString message = QStringLiteral("open=/home/somebody/documents/letters/2024/december/invitation-7");
constexpr int messageBytes = 64;
constexpr int limitMilliseconds = 5000;

constexpr int messagesOfPercentile = 500;
constexpr int clientCount = 8;
constexpr int messagesOfClient = 50;
const QByteArray byKit = "kit";
const QByteArray byHand = "by hand";

/** Sends @p text over a connection of its own, and whether that was acknowledged. */
bool sendByHand(const QString& server, const QByteArray& text)
{
    QLocalSocket socket;
    socket.connectToServer(server);
    if (!socket.waitForConnected(limitMilliseconds)) {
        return false;
    }
    QByteArray block(sizeof(quint32), Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(text.size()), block.data());
    socket.write(block + text);
    return socket.waitForReadyRead(limitMilliseconds) && socket.read(3) == "ack";
}

/** Both ways to reach one server. */
class Client
{
public:
    explicit Client(QString server)
        : m_server(std::move(server))
        , m_peer(nullptr, sceneIdentity())
    { }

    void sendByKit() { requireSameWork(m_peer.sendMessage(message, limitMilliseconds)); }

    void sendByHand() const { requireSameWork(bench::sendByHand(m_server, m_text)); }

private:
    QString m_server;
    QByteArray m_text = message.toUtf8();
    QtLocalPeer m_peer;
};

// Sends its share of messages for each line that says by which way, and says when all are acknowledged.
ChildResult sendShares(const QString& server)
{
    Client client(server);
    for (std::string line; std::getline(std::cin, line);) {
        for (int count = 0; count < messagesOfClient; ++count) {
            if (line == byKit.toStdString()) {
                client.sendByKit();
            } else {
                client.sendByHand();
            }
        }
        std::cout << "sent" << std::endl;
    }
    return {};
}

/** A server in a process of its own, and a client of it in this one. Nobody else is met in their folder. */
class Exchange
{
public:
    Exchange()
    {
        requireSameWork(m_scene.play("P isClient: false").empty());
        m_client = std::make_unique<Client>(serverName());
        m_client->sendByKit();
        m_client->sendByHand();
        const std::string text = QUrl::toPercentEncoding(message).toStdString();
        requireSameWork(message.size() == messageBytes
            && m_scene.play("P next: " + text + "; P next: " + text + "; P left: 0").empty());
    }

    QString serverName() const
    {
        return QDir::temp().entryList({ "*-lockfile" }).value(0).section("-lockfile", 0, 0);
    }

    Client& client() { return *m_client; }

private:
    Scene m_scene;
    std::unique_ptr<Client> m_client;
};

Sampler sendBoth()
{
    const auto exchange = std::make_shared<Exchange>();
    return interleaved(repeated([exchange] { exchange->client().sendByKit(); }),
        repeated([exchange] { exchange->client().sendByHand(); }));
}

double percentile99(std::vector<double> values)
{
    const auto nth = values.begin() + static_cast<std::ptrdiff_t>((values.size() * 99 - 1) / 100);
    std::nth_element(values.begin(), nth, values.end());
    return *nth;
}

// The two sides take turns message by message, so that both meet the same disturbances.
Sampler slowestOfBoth()
{
    const auto exchange = std::make_shared<Exchange>();
    const Sampler turn =
        interleaved([exchange] { return nanosecondsOf([&] { exchange->client().sendByKit(); }); },
            [exchange] { return nanosecondsOf([&] { exchange->client().sendByHand(); }); });
    return [turn] {
        std::vector<double> kit;
        std::vector<double> alternative;
        for (int count = 0; count < messagesOfPercentile; ++count) {
            const Amounts times = turn();
            kit.push_back(times.kit);
            alternative.push_back(times.alternative);
        }
        return Amounts { percentile99(std::move(kit)), percentile99(std::move(alternative)) };
    };
}

/** Clients in processes of their own. */
class Crowd
{
public:
    Crowd()
    {
        for (int count = 0; count < clientCount; ++count) {
            m_clients.push_back(std::make_unique<TalkingChild>(clientChild, m_exchange.serverName()));
        }
    }

    /** The time for each message while all of them send at once. */
    double send(const QByteArray& way)
    {
        const double nanoseconds = nanosecondsOf([&] {
            for (const auto& client : m_clients) {
                client->say(way);
            }
            for (const auto& client : m_clients) {
                requireSameWork(client->hear() == "sent");
            }
        });
        return nanoseconds / (clientCount * messagesOfClient);
    }

private:
    Exchange m_exchange;
    std::vector<std::unique_ptr<TalkingChild>> m_clients;
};

Sampler sendInCrowd()
{
    const auto crowd = std::make_shared<Crowd>();
    return interleaved([crowd] { return crowd->send(byKit); }, [crowd] { return crowd->send(byHand); });
}

} // namespace

void addPeerRows(Suite& suite)
{
    suite.children[clientChild] = sendShares;

    const auto addRow = [&suite](const char* name, const char* unit, const QString& what,
                            std::optional<double> ceiling, int samples,
                            const std::function<Sampler()>& prepare) {
        suite.rows.push_back({ QLatin1String(name), QLatin1String(unit),
            QStringLiteral("QtLocalPeer::sendMessage of 64 bytes") + what,
            QStringLiteral("the same bytes over a bare QLocalSocket, to the same server") + what, ceiling,
            samples, prepare });
    };
    addRow("peer.send", "one message, from the call to its result", {}, 1.2, 501, sendBoth);
    addRow("peer.send-p99", "the 99th percentile of 500 messages", QStringLiteral(": the 99th percentile"),
        std::nullopt, 31, slowestOfBoth);
    addRow("peer.send-8-clients", "one message while 8 processes send at once",
        QStringLiteral(": the whole time for each, with 8 clients at once"), std::nullopt, 51, sendInCrowd);
}

} // namespace bench
