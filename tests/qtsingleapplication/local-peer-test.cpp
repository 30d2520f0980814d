#include "qtsingleapplication/kit-scene.h"
#include "support/guarded-test.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QtTest>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

/** What processes P, Q and R with a peer make out among themselves, and what others do to them. */
class LocalPeerTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void roles_data();
    void roles();
    void end();
    void users();
    void access();
    void occupiedName_data();
    void occupiedName();
    void exchange_data();
    void exchange();
    void strangers_data();
    void strangers();

public Q_SLOTS:

    void succeed() { QCOMPARE(successors->play("P isClient: false"), QString()); }

private:
    KitScene* successors = nullptr;
};

namespace {

constexpr int longEnough = 30000; // milliseconds

const QString deaf =
    "[QtSingleCoreApplication: listen on local socket failed, QLocalServer::listen: Address in use]";

} // namespace

void LocalPeerTest::roles_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("nobody is primary unasked") << "P identity: scene; Q isClient: false; P isClient";
    QTest::newRow("primary and clients")
        << "P send no: false; P isClient: false; Q isClient; R isClient; P send no: false; Q send hello; "
           "R send; P next: hello; P next: ; P left: 0; Q isClient";
    QTest::newRow("the primary ends")
        << "P isClient: false; Q isClient; P end; Q send no: false; Q isClient: false; R send hello; "
           "Q next: hello; Q left: 0";
    QTest::newRow("the primary is killed")
        << "P isClient: false; Q isClient; P kill; Q send no: false; Q isClient: false; R send hello; "
           "Q next: hello; Q left: 0";
    QTest::newRow("the primary is stopped")
        << "P isClient: false; P stop; Q isClient; Q send no 100: false; P kill; Q isClient: false";
    QTest::newRow("the files of the primary's mutexes are removed")
        << "P isClient: false; P remove-files; Q isClient; Q send hello; P next: hello; P end; "
           "Q isClient: false; R isClient";
    QTest::newRow("the primary unlocks")
        << "P isClient: false; P unlock; P unlock; Q isClient: false [deaf]; P isClient; R send hello; "
           "P next: hello; Q left: 0; Q end; "
           "P isClient: false [QLocalServer::listen() called when already listening] "
           "[QtSingleCoreApplication: listen on local socket failed, ]; "
           "P isClient: false; R send again; P next: again; P left: 0";
    QTest::newRow("the primary unlocks and ends")
        << "P isClient: false; P unlock; P end; Q isClient: false; R send hello; Q next: hello";
}

void LocalPeerTest::roles()
{
    QFETCH(QString, steps);
    QCOMPARE(KitScene().play(steps.replace("[deaf]", deaf)), QString());
}

/** Where the lock is free, the name of the socket is as well. */
void LocalPeerTest::end()
{
    KitScene others;
    successors = &others;
    {
        QtLocalPeer peer(nullptr, sceneIdentity);
        QVERIFY(!peer.isClient());
        QCOMPARE(others.play("P isClient"), QString());
        // The base class says so when the lock is already gone, and the children are not.
        connect(&peer, SIGNAL(destroyed()), this, SLOT(succeed()));
    }
    QCOMPARE(others.play("Q send hello; P next: hello"), QString());
}

/** A user has names of his own where no login session is his: in none, and in that of another user. */
void LocalPeerTest::users()
{
    if (geteuid() != 0) {
        QSKIP("This takes another user.");
    }
    const QString user = QString::number(1000000 + getpid());
    KitScene scene;
    const QString steps =
        "P log-in: *; P become %1; P isClient: false; Q isClient: false; R become %1; R isClient";
    QCOMPARE(scene.play(steps.arg(user)), QString());
    const QString ofUser = QStringLiteral("*-%1-lockfile").arg(user.toInt(), 0, 16);
    QCOMPARE(QFileInfo(scene.socketPath()).dir().entryList({ ofUser }).size(), 1);
    if (scene.ask("S", "log-in") == "true") {
        QCOMPARE(scene.play("S isClient: false; T log-in; T isClient: false"), QString());
    }
    QDir("/tmp/vantkit-" + user).removeRecursively();
}

/** The socket is its user's alone. */
void LocalPeerTest::access()
{
    const mode_t former = umask(0);
    KitScene scene;
    const QString wrong = scene.play("P isClient: false");
    umask(former);
    QCOMPARE(wrong, QString());
    const auto ofOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(scene.socketPath()) & ofOthers, QFile::Permissions());
}

void LocalPeerTest::occupiedName_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("by a link") << true;
    QTest::newRow("by a crowded server") << false;
}

/** The name of the socket is left to whom it belongs, and the primary is deaf. */
void LocalPeerTest::occupiedName()
{
    QFETCH(bool, isLink);
    KitScene scene;
    QCOMPARE(scene.play("P identity: scene"), QString());
    const QString path = scene.socketPath();
    QLocalServer server;
    std::vector<std::unique_ptr<QLocalSocket>> crowd;
    if (isLink) {
        QVERIFY(QFile::link(path + "-lockfile", path));
    } else {
        QVERIFY(server.listen(path));
        do { // until no more may wait
            crowd.push_back(std::make_unique<QLocalSocket>());
            crowd.back()->connectToServer(path);
        } while (crowd.back()->state() == QLocalSocket::ConnectedState);
    }
    QCOMPARE(scene.play("P isClient: false " + deaf + "; P isClient: false; Q isClient"), QString());
    QElapsedTimer time;
    time.start();
    QCOMPARE(scene.play("Q send no 100: false"), QString());
    QVERIFY2(time.elapsed() >= 250, "no second try");
    QCOMPARE(QFileInfo(path).isSymLink(), isLink);
    QVERIFY(QFileInfo::exists(path));
}

void LocalPeerTest::exchange_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("hello") << QByteArray("0000000568656c6c6f") << QByteArray("ack");
    QTest::newRow("") << QByteArray("00000000") << QByteArray("ack");
    QTest::newRow("a%00%C3%A9%F0%9F%98%80") << QByteArray("000000086100c3a9f09f9880") << QByteArray("ack");
    for (const char* answer : { "nak", "ac", "" }) {
        QTest::newRow("no") << QByteArray("000000026e6f") << QByteArray(answer);
    }
}

/**
 * What a client sends, and what it makes of an answer; somebody else has the name of the primary's socket.
 */
void LocalPeerTest::exchange()
{
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, answer);
    KitScene scene;
    QCOMPARE(scene.play("P identity: scene"), QString());
    QLocalServer server;
    QVERIFY(server.listen(scene.socketPath()));
    QCOMPARE(scene.play("P isClient: false " + deaf), QString());

    scene.tell("Q", QStringLiteral("send ") + QTest::currentDataTag());
    // The first one to connect is P, which looks whether somebody listens.
    std::unique_ptr<QLocalSocket> client;
    while (!client || client->bytesAvailable() < sent.size() / 2) {
        if (!client || !client->waitForReadyRead(longEnough)) {
            QVERIFY(server.hasPendingConnections() || server.waitForNewConnection(longEnough));
            client.reset(server.nextPendingConnection());
        }
    }
    QCOMPARE(client->readAll().toHex(), sent);
    client->write(answer);
    client->flush();
    if (answer.isEmpty()) {
        client.reset();
    }
    QCOMPARE(scene.answer("Q"), answer == "ack" ? "true" : "false");
}

void LocalPeerTest::strangers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<bool>("stays");
    const auto row = [](const char* name, const char* bytes, const QString& taken, bool stays = false) {
        QTest::newRow(name) << QByteArray(bytes) << taken << stays;
    };
    const QString nothing;
    row("comes and goes", "", nothing);
    row("ends within the length", "000000", nothing);
    row("ends before the text", "00000004", "");
    row("ends within the text", "0000000461", "a");
    row("never takes its answer", "00000006c3a9f09f9880", "%C3%A9%F0%9F%98%80", true);
    row("nothing, and more", "000000006162", "");
    row("more than announced", "0000000261626364", "ab");
    row("negative length", "ffffffff6162", nothing);
    row("longest length", "7fffffff6162", nothing);
    row("longest length with room", "7fffffbf6162", "ab");
    row("1 GB announced", "400000006162", "ab", true);
    row("no UTF-8", "0000000561ff62c328", "a%EF%BF%BDb%EF%BF%BD%28");
    row("a NUL", "00000003610062", "a");
}

/** Whatever comes over the socket, the primary takes no harm and serves the next client. */
void LocalPeerTest::strangers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, taken);
    QFETCH(bool, stays);
    KitScene scene;
    QCOMPARE(scene.play("P isClient: false; Q send first; P next: first"), QString());
    const qint64 memory = scene.ask("P", "memory").toLongLong();
    QVERIFY(memory > 0);

    QLocalSocket stranger;
    stranger.connectToServer(scene.socketPath());
    QVERIFY(stranger.waitForConnected(longEnough));
    for (const char byte : QByteArray::fromHex(bytes)) {
        stranger.write(&byte, 1);
        stranger.flush();
    }
    if (!stays) {
        stranger.abort();
    }
    QCOMPARE(scene.play("Q send honest"), QString());
    if (stays) {
        QVERIFY(stranger.bytesAvailable() > 0 || stranger.waitForReadyRead(longEnough));
        QCOMPARE(stranger.readAll(), QByteArray("ack"));
    }
    QCOMPARE(
        scene.play(taken.isNull() ? "P next: honest" : "P next: " + taken + "; P next: honest"), QString());
    QCOMPARE(scene.play("P left: 0"), QString());
    QVERIFY(scene.ask("P", "memory").toLongLong() - memory < 100000);
}

QTEST_GUILESS_MAIN(LocalPeerTest)

#include "local-peer-test.moc"
