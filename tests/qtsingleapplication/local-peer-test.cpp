#include "qtsingleapplication/kit-scene.h"
#include "support/guarded-test.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QtTest>

constexpr int longEnough = 30000; // milliseconds

/** What a peer sends, and what others may do to it. */
class LocalPeerTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void end();
    void exchange_data();
    void exchange();
    void strangers_data();
    void strangers();

public Q_SLOTS:

    void succeed() { QVERIFY(!QtLocalPeer(nullptr, sceneIdentity).isClient()); }
};

/** Where the lock is free, the name of the socket is as well. */
void LocalPeerTest::end()
{
    const KitScene scene;
    QtLocalPeer peer(nullptr, sceneIdentity);
    QVERIFY(!peer.isClient());
    // The base class says so when the lock is already gone, and the children are not.
    connect(&peer, SIGNAL(destroyed()), this, SLOT(succeed()));
}

void LocalPeerTest::exchange_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("") << QByteArray("00000000") << QByteArray("ack");
    QTest::newRow("a%00%C3%A9%F0%9F%98%80") << QByteArray("000000086100c3a9f09f9880") << QByteArray("ack");
    for (const char* answer : { "nak", "ac", "" }) {
        QTest::newRow("no") << QByteArray("000000026e6f") << QByteArray(answer);
    }
}

/** Who has the lock does not listen at first. */
void LocalPeerTest::exchange()
{
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, answer);
    KitScene scene;
    QCOMPARE(scene.play("Q identity: scene"), QString());
    const QString name = scene.socketName();
    QElapsedTimer time;
    time.start();
    QCOMPARE(scene.play("P0 new " + name + "-lockfile; P0 write; Q send no: false"), QString());
    QVERIFY2(time.elapsed() >= 250, "no second try");

    QLocalServer server;
    QVERIFY(server.listen(name));
    scene.tell("Q", QStringLiteral("send ") + QTest::currentDataTag());
    QVERIFY(server.waitForNewConnection(longEnough));
    QLocalSocket* const client = server.nextPendingConnection();
    while (client->bytesAvailable() < sent.size() / 2) {
        QVERIFY(client->waitForReadyRead(longEnough));
    }
    QCOMPARE(client->readAll().toHex(), sent);
    client->write(answer);
    client->flush();
    if (answer.isEmpty()) {
        client->abort();
    }
    QCOMPARE(scene.answer("Q"), answer == "ack" ? "true" : "false");
}

void LocalPeerTest::strangers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<bool>("stays");
    const auto row = [](const char* name, const char* bytes, const char* taken, bool stays = false) {
        QTest::newRow(name) << QByteArray::fromHex(bytes) << QString(taken) << stays;
    };
    row("ends within the length", "000000", nullptr);
    row("ends before the text", "00000004", "P next: ; ");
    row("ends within the text", "0000000461", "P next: a; ");
    row("never takes its answer", "00000006c3a9f09f9880", "P next: %C3%A9%F0%9F%98%80; ", true);
    row("more than announced", "0000000261626364", "P next: ab; ");
    row("negative length", "ffffffff6162", nullptr);
    row("longest length", "7fffffff6162", nullptr);
    row("longest length with room", "7fffffbf6162", "P next: ab; ");
    row("1 GB announced", "400000006162", "P next: ab; ", true);
    row("a NUL", "00000003610062", "P next: a; ");
}

/** Whatever comes over the socket, the primary takes no harm and serves the next client. */
void LocalPeerTest::strangers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, taken);
    QFETCH(bool, stays);
    const auto memory = [](KitScene& scene) {
        scene.tell("P", "memory");
        return scene.answer("P").toLongLong();
    };
    KitScene scene;
    QCOMPARE(scene.play("P isClient: false; Q send first; P next: first"), QString());
    const qint64 before = memory(scene);
    QVERIFY(before > 0);

    QLocalSocket stranger;
    stranger.connectToServer(scene.socketName());
    QVERIFY(stranger.waitForConnected(longEnough));
    for (const char byte : bytes) {
        stranger.write(&byte, 1);
        stranger.waitForBytesWritten(longEnough);
    }
    if (!stays) {
        stranger.abort();
    }
    QCOMPARE(scene.play("Q send honest"), QString());
    if (stays) {
        QVERIFY(stranger.bytesAvailable() > 0 || stranger.waitForReadyRead(longEnough));
        QCOMPARE(stranger.readAll(), QByteArray("ack"));
    }
    QCOMPARE(scene.play(taken + "P next: honest; P left: 0"), QString());
    QVERIFY(memory(scene) - before < 100000);
}

QTEST_GUILESS_MAIN(LocalPeerTest)

#include "local-peer-test.moc"
