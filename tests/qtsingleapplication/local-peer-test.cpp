#include "qtsingleapplication/kit-scene.h"
#include "support/guarded-test.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QtTest>
#ifdef Q_OS_WIN
#include <windows.h>
#endif

#include <memory>

constexpr int longEnough = 30000; // milliseconds

/** Who among P, Q, R and S has a file's lock or is the primary process, and what comes over its socket. */
class LocalPeerTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void names();
    void scenes_data();
    void scenes();
    void manyReaders();
    void end();
    void exchange_data();
    void exchange();
    void strangers_data();
    void strangers();

public Q_SLOTS:

    void succeed() { QVERIFY(!QtLocalPeer(nullptr, sceneIdentity()).isClient()); }

    /** The second message comes while the slot is at the first, and ends it all. */
    void drop()
    {
        QVERIFY2(!peer->findChild<QLocalSocket*>(), "the sender is not let go first");
        if (++messages == 2) {
            peer.reset();
            return;
        }
        senders->tell("R", "send more");
        QTRY_VERIFY_WITH_TIMEOUT(!peer, longEnough);
    }

private:
    int messages = 0;
    KitScene* senders = nullptr;
    std::unique_ptr<QtLocalPeer> peer;
};

/** The names that processes of whatever release of the kit have to agree on, but for the session. */
void LocalPeerTest::names()
{
    const KitScene scene;
    for (const char* identity : { "abc", "ABC", "12345", "Größe 漢😀", "kitchenette" }) {
        QCOMPARE(QtLocalPeer(nullptr, identity).applicationId(), identity);
    }
    const QString path = QCoreApplication::applicationFilePath().toLower();
    QCOMPARE(QtLocalPeer().applicationId(), path);
    QtLocalPeer(nullptr, path);
    QStringList names = QDir::temp().entryList(QDir::Files);
    names.replaceInStrings(QRegularExpression("^qtsingleapp-(.*)-[0-9a-f]+-lockfile$"), "\\1");
    for (const char* name : { "-bb40", "ABC-9f2f", "Gre-9db2", "abc-9e25", "kitche-cc29" }) {
        QVERIFY2(names.contains(name), name);
    }
    const QString checksum = names.filter(QRegularExpression("^testlo-")).value(0).section('-', 1);
    QCOMPARE(names.filter(QRegularExpression("-" + checksum + "$")).size(), 2);
}

void LocalPeerTest::scenes_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("a writer keeps all others out")
        << "P0 write; P0 mode: 2; Q0 write: false; Q0 read: false; P1 read: false; P owned: writer; "
           "P0 write; P0 unlock; P0 unlock; P0 mode: 0; Q0 write; P0 write: false; Q0 none; P0 read";
    QTest::newRow("readers keep writers out, take the lowest free slot, and leave nothing")
        << "P0 read; P0 mode: 1; Q0 read; P1 read; P2 read; R owned: 0 1 2 3; Q1 write: false; "
           "Q1 mode: 0; P1 unlock; P0 unlock; P2 read; R0 read; R owned: 0 1 3; R0 write: false; "
           "R0 mode: 0; Q0 unlock; R owned: 3; P2 write; R owned: writer; P2 read; P2 mode: 1; "
           "R owned: 0; P2 unlock; R open file0: missing; R open file1: missing; R open file3: missing";
    QTest::newRow("a writer takes what others have merely open")
        << "P create file0 file7 file63; Q0 write; R owned: writer 0 7 63; Q0 unlock; R owned: ; "
           "P close file0 file7 file63; R open file0: missing; R open file63: missing";
    QTest::newRow("a writer waits for all readers, and nobody passes him")
        << "P0 read; Q0 read; P1 read; R0 write waiting!: begun; S owned becomes writer 0 1 2; P0 unlock; "
           "S0 read: false; S0 write: false; Q0 unlock; R waits; P kill; R answers; R0 mode: 2; "
           "S0 read: false";
    QTest::newRow("others wait for a writer, who is killed in the end")
        << "P0 write; Q0 read waiting!: begun; R0 read: false; Q waits; P0 unlock; Q answers; R owned: 0; "
           "Q0 none; P0 write; Q0 write waiting!: begun; Q waits; P kill; Q answers; R0 read: false";
    QTest::newRow("paths in any case, and an object that is deleted")
        << "P0 new File; Q0 new fILE; P0 write; Q0 write: false; P owned: writer; P0 new other; Q0 write; "
           "P0 write";
    QTest::newRow("a file is closed under its lock, and not to be truncated")
        << "P0 write; P0 shut; P0 unlock: false [QtLockedFile::unlock(): file is not opened]; P0 mode: 2; "
           "P0 read: false [QtLockedFile::lock(): file is not opened]; Q0 write: false; "
           "P0 truncate: false [QtLockedFile::open(): Truncate mode not allowed.]; P0 reopen; P0 unlock; "
           "Q0 write";

    QTest::newRow("nobody is primary unasked, or sends to himself")
        << "R identity: *; P send no: false; P isClient: false; Q isClient; R isClient; "
           "P send no: false; Q send hello; R send; P next: hello; P next: ; P left: 0";
    QTest::newRow("the primary ends, the next one is killed, and that after it unlocks")
        << "P isClient: false; Q isClient; P end; Q send no: false; R isClient; R send a; Q next: a; "
           "Q left: 0; Q kill; R send no: false; R isClient: false; S send b; R next: b; R unlock; "
           "R unlock; R end; S isClient: false; P send c; S next: c";
}

void LocalPeerTest::scenes()
{
    QFETCH(QString, steps);
    QCOMPARE(KitScene().play(steps), QString());
}

void LocalPeerTest::manyReaders()
{
    KitScene scene;
    QString all;
    for (int reader = 0; reader < 64; ++reader) {
        QCOMPARE(scene.play(QStringLiteral("%1%2 read").arg(reader % 2 ? 'P' : 'Q').arg(reader)), QString());
        all += QStringLiteral(" %1").arg(reader);
    }
    const QString steps =
        "R0 read: false %1; R0 mode: 0; R0 read waiting!: begun; R answers: false %1; R owned: %2; "
        "R0 write: false; P17 unlock; R0 read; R owned: %2; R1 read: false %1";
    QCOMPARE(scene.play(steps.arg("[QtLockedFile::lock(): too many readers]", all.mid(1))), QString());
}

/** Where the lock is free, the name of the socket is as well. */
void LocalPeerTest::end()
{
    KitScene scene;
    senders = &scene;
    peer = std::make_unique<QtLocalPeer>(nullptr, sceneIdentity());
    QVERIFY(!peer->isClient());
#ifdef Q_OS_WIN
    DWORD session = 0;
    QVERIFY(ProcessIdToSessionId(GetCurrentProcessId(), &session));
    QCOMPARE(scene.socketName().section('-', 3), QString::number(session, 16));
    // A mutex lets the thread that has it in again, and has to be released as often.
    QVERIFY(!QtLocalPeer(nullptr, sceneIdentity()).isClient());
    QCOMPARE(scene.play("S isClient"), QString());
#endif
    // The base class says so when the lock is already gone, and the children are not.
    connect(peer.get(), SIGNAL(destroyed()), this, SLOT(succeed()));
    connect(peer.get(), SIGNAL(messageReceived(QString)), this, SLOT(drop()));
    scene.tell("Q", "send hello");
    QTRY_VERIFY_WITH_TIMEOUT(!peer, longEnough);
    QCOMPARE(scene.answer("Q") + scene.answer("R"), "truetrue");
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
    QCOMPARE(scene.play("Q identity: *"), QString());
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
    QVERIFY(client->waitForReadyRead(longEnough));
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
#ifndef Q_OS_WIN // where the end may be noticed before the text is missed, and is an error then
    row("ends before the text", "00000004", "P next: ; ");
#endif
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
    // Piece by piece to who takes every piece; Qt complains on Windows of one that is not.
    for (int begin = 0, size = stays ? 1 : bytes.size(); begin < bytes.size(); begin += size) {
        stranger.write(bytes.mid(begin, size));
        QVERIFY(stranger.waitForBytesWritten(longEnough));
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
