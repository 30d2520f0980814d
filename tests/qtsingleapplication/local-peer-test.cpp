#include "qtsingleapplication/scene.h"
#include "support/guarded-test.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QtTest>

#include <memory>
#include <vector>

/** What processes P, Q and R with a peer make out among themselves, and what others do to them. */
class LocalPeerTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void roles_data();
    void roles();
    void end();
    void occupiedName_data();
    void occupiedName();
    void noLockFile();
    void exchange_data();
    void exchange();
    void strangers_data();
    void strangers();
    void bareClient();

public Q_SLOTS:
    void succeed();

private:
    Scene* successors = nullptr;
};

namespace {

constexpr int patience = 30000; // milliseconds

const QString deaf = QStringLiteral(
    "[QtSingleCoreApplication: listen on local socket failed, QLocalServer::listen: Address in use]");

QByteArray bytes(const char* hexadecimal)
{
    return QByteArray::fromHex(hexadecimal);
}

/** Address space, in kB, at its peak. */
qint64 peakMemory(qint64 process)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QString text = QString::fromLatin1(status.readAll());
    return QRegularExpression(QStringLiteral("VmPeak:\\s+(\\d+)")).match(text).captured(1).toLongLong();
}

} // namespace

void LocalPeerTest::roles_data()
{
    QTest::addColumn<QString>("steps");
    const auto row = [](const char* name, const char* steps) {
        QTest::newRow(name) << QString::fromLatin1(steps).replace(QStringLiteral("[deaf]"), deaf);
    };
    row("nobody is primary unasked", "P peer: scene; Q isClient: false; P isClient");
    row("primary and clients",
        "P isClient: false; P isClient: false; Q isClient; R isClient; P send no: false; Q send hello; R "
        "send; "
        "P take: hello; P take: ; P left: 0; Q isClient");
    row("a client sends without asking first", "P isClient: false; Q send hello; P take: hello");
    row("nobody to send to", "P send no: false; Q send hello; P take: hello; P left: 0");
    row("the primary ends",
        "P isClient: false; Q isClient; P end; Q send no: false; Q isClient: false; R send hello; Q take: "
        "hello; "
        "Q left: 0");
    row("the primary is killed",
        "P isClient: false; Q isClient; P kill; Q send no: false; Q isClient: false; R send hello; Q take: "
        "hello; "
        "Q left: 0");
    row("the primary is killed, and nobody knew it",
        "P isClient: false; P kill; Q isClient: false; R send hello; Q take: hello");
    row("the primary unlocks",
        "P isClient: false; P unlock; P unlock; Q isClient: false [deaf]; P isClient; R send hello; P take: "
        "hello; "
        "Q left: 0; Q end; P isClient: false [QLocalServer::listen() called when already listening] "
        "[QtSingleCoreApplication: listen on local socket failed, ]; "
        "P isClient: false; R send again; P take: again; P left: 0");
    row("the primary unlocks and ends",
        "P isClient: false; P unlock; P end; Q isClient: false; R send hello; Q take: hello");
}

void LocalPeerTest::roles()
{
    QFETCH(QString, steps);
    Scene scene;
    QCOMPARE(scene.play(steps), QString());
    QCOMPARE(scene.finish(), QString());
}

/** Where the lock is free, the name of the socket is as well. */
void LocalPeerTest::end()
{
    Scene others;
    successors = &others;
    {
        QtLocalPeer peer(nullptr, QLatin1String(sceneIdentity));
        QVERIFY(!peer.isClient());
        QCOMPARE(others.play(QStringLiteral("P isClient")), QString());
        // The base class says so when the lock is already gone, and the children are not.
        connect(&peer, SIGNAL(destroyed()), this, SLOT(succeed()));
    }
    QCOMPARE(others.play(QStringLiteral("Q send hello; P take: hello")), QString());
    QCOMPARE(others.finish(), QString());
    successors = nullptr;
}

void LocalPeerTest::succeed()
{
    QCOMPARE(successors->play(QStringLiteral("P isClient: false")), QString());
}

void LocalPeerTest::occupiedName_data()
{
    QTest::addColumn<QByteArray>("what");
    for (const char* what : { "file", "folder", "link", "crowded server" }) {
        QTest::newRow(what) << QByteArray(what);
    }
}

/** The name of the socket is left to whom it belongs, and the primary is deaf. */
void LocalPeerTest::occupiedName()
{
    QFETCH(QByteArray, what);
    Scene scene;
    QCOMPARE(scene.play(QStringLiteral("P peer: scene")), QString());
    const QString path = scene.socketPath();
    QLocalServer server;
    std::vector<std::unique_ptr<QLocalSocket>> crowd;
    if (what == "file") {
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
    } else if (what == "folder") {
        QVERIFY(QDir().mkdir(path));
    } else if (what == "link") {
        QVERIFY(QFile::link(scene.path(QStringLiteral("nowhere")), path));
    } else {
        QVERIFY(server.listen(path));
        do { // until no more may wait
            crowd.push_back(std::make_unique<QLocalSocket>());
            crowd.back()->connectToServer(path);
        } while (crowd.back()->state() == QLocalSocket::ConnectedState);
    }
    const QFileInfo before(path);
    QCOMPARE(scene.play(QStringLiteral("P isClient: false ") + deaf
                 + QStringLiteral("; P isClient: false; Q isClient")),
        QString());
    QElapsedTimer time;
    time.start();
    QCOMPARE(scene.play(QStringLiteral("Q send no 100: false")), QString());
    QVERIFY2(time.elapsed() >= 250, "no second try");
    const QFileInfo after(path);
    QCOMPARE(after.isSymLink(), before.isSymLink());
    QCOMPARE(after.isDir(), before.isDir());
    QCOMPARE(after.exists(), before.exists());
    QCOMPARE(scene.finish(), QString());
}

void LocalPeerTest::noLockFile()
{
    Scene scene;
    QCOMPARE(scene.play(QStringLiteral("P peer: scene; P end")), QString());
    const QString path = scene.socketPath() + QStringLiteral("-lockfile");
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir().mkdir(path));
    const QString notOpen = QStringLiteral("[QtLockedFile::lock(): file is not opened]");
    QCOMPARE(
        scene.play(
            QStringLiteral("P isClient: true %1; Q isClient: true %1; P send no: false %1").arg(notOpen)),
        QString());
    QCOMPARE(scene.finish(), QString());
}

void LocalPeerTest::exchange_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("result");
    const auto row = [](const char* text, const char* sent, const char* answer, const char* result) {
        QTest::addRow("%s, %s", text, answer)
            << QString::fromLatin1(text) << bytes(sent) << QByteArray(answer) << QString::fromLatin1(result);
    };
    row("hello", "00000005 68656c6c6f", "ack", "true");
    row("", "00000000", "ack", "true");
    row("a%00b", "00000003 610062", "ack", "true");
    row("%C3%A9%F0%9F%98%80", "00000006 c3a9f09f9880", "ack", "true");
    row("no", "00000002 6e6f", "nak", "false");
    row("no", "00000002 6e6f", "ac", "false");
    row("no", "00000002 6e6f", "", "false");
}

/** What a client sends, and what it makes of an answer; somebody else has the name of the primary's socket.
 */
void LocalPeerTest::exchange()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, answer);
    Scene scene;
    QCOMPARE(scene.play(QStringLiteral("P peer: scene")), QString());
    QLocalServer server;
    QVERIFY(server.listen(scene.socketPath()));
    QCOMPARE(scene.play(QStringLiteral("P isClient: false ") + deaf), QString());

    scene.tell(QStringLiteral("Q"), QStringLiteral("send ") + text);
    // The first one to connect is P, which looks whether somebody listens.
    std::unique_ptr<QLocalSocket> client;
    while (!client || client->bytesAvailable() < sent.size()) {
        if (!client || !client->waitForReadyRead(patience)) {
            QVERIFY(server.hasPendingConnections() || server.waitForNewConnection(patience));
            client.reset(server.nextPendingConnection());
        }
    }
    QCOMPARE(client->readAll(), sent);
    client->write(answer);
    client->flush();
    if (answer.isEmpty()) {
        client.reset();
    }
    QTEST(scene.answer(QStringLiteral("Q")), "result");
    QCOMPARE(scene.finish(), QString());
}

void LocalPeerTest::strangers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("stays");
    QTest::addColumn<QString>("taken");
    const auto row = [](const char* name, const QByteArray& bytes, const char* taken, bool stays = false) {
        QTest::newRow(name) << bytes << stays << QString::fromLatin1(taken);
    };
    const char* const nothing = nullptr;
    const QByteArray whole = bytes("00000004 61626364");
    for (int size = 0; size <= whole.size(); ++size) {
        const QByteArray taken = whole.mid(4, size - 4);
        row(qPrintable(QStringLiteral("ends after %1 bytes").arg(size)), whole.left(size),
            size < 4 ? nothing : taken.constData());
    }
    row("never takes its answer", whole, "abcd", true);
    row("nothing", bytes("00000000"), "");
    row("nothing, and more", bytes("00000000 6162"), "");
    row("more than announced", bytes("00000002 61626364"), "ab");
    row("negative length", bytes("ffffffff 6162"), nothing);
    row("most negative length", bytes("80000000 6162"), nothing);
    row("longest length", bytes("7fffffff 6162"), nothing);
    row("longest length with room", bytes("7fffffbf 6162"), "ab");
    row("1 GB announced", bytes("40000000 6162"), "ab", true);
    row("no UTF-8", bytes("00000005 61ff62c328"), "a%EF%BF%BDb%EF%BF%BD%28");
    row("a NUL", bytes("00000003 610062"), "a");
}

/** Whatever comes over the socket, the primary takes no harm and serves the next client. */
void LocalPeerTest::strangers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, stays);
    QFETCH(QString, taken);
    Scene scene;
    QCOMPARE(scene.play(QStringLiteral("P isClient: false; Q send first; P take: first")), QString());
    const qint64 memory = peakMemory(scene.processId(QStringLiteral("P")));

    QLocalSocket stranger;
    stranger.connectToServer(scene.socketPath());
    QVERIFY(stranger.waitForConnected(patience));
    for (const char byte : qAsConst(bytes)) {
        stranger.write(&byte, 1);
        stranger.flush();
    }
    if (!stays) {
        stranger.abort();
    }
    QCOMPARE(scene.play(QStringLiteral("Q send honest")), QString());
    if (!taken.isNull()) {
        QCOMPARE(scene.ask(QStringLiteral("P"), QStringLiteral("take")), taken);
    }
    QCOMPARE(scene.play(QStringLiteral("P take: honest; P left: 0")), QString());
    QVERIFY(memory > 0);
    QVERIFY(peakMemory(scene.processId(QStringLiteral("P"))) - memory < 100000);
    QCOMPARE(scene.finish(), QString());
}

void LocalPeerTest::bareClient()
{
    Scene scene;
    QCOMPARE(scene.play(QStringLiteral("P isClient: false")), QString());
    QProcess client;
    client.start(QStringLiteral("python3"),
        { QStringLiteral(BARE_CLIENT), scene.socketPath(), QString::fromUtf8("Größe \"1\"\n😀") });
    QVERIFY(client.waitForFinished(patience));
    QCOMPARE(client.readAllStandardError(), QByteArray());
    QCOMPARE(client.readAllStandardOutput().trimmed(), QByteArray("ack"));
    QCOMPARE(scene.play(QStringLiteral("P take: Gr%C3%B6%C3%9Fe%20%221%22%0A%F0%9F%98%80")), QString());
    QCOMPARE(scene.finish(), QString());
}

QTEST_GUILESS_MAIN(LocalPeerTest)

#include "local-peer-test.moc"
