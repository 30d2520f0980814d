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

/** What Windows spares, or does not offer to, the locked file and the peer. */
class PosixTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void scenes_data();
    void scenes();
    void users();
    void access();
    void occupiedName_data();
    void occupiedName();
};

namespace {

const QString deaf =
    "[QtSingleCoreApplication: listen on local socket failed, QLocalServer::listen: Address in use]";

} // namespace

void PosixTest::scenes_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("a writer's file is closed and deleted")
        << "P create file0; Q0 write; Q0 shut; Q0 new other; R0 read; R owned: 0";
    QTest::newRow("no handle for the writer mutex")
        << "P0 mode: 0; P1 write; P1 unlock; P limit-files 4; P0 write: false [lock: CreateMutex failed]; "
           "P0 mode: 0; P limit-files 1000; P0 write";
    QTest::newRow("a reader mutex that cannot be opened")
        << "P0 write; P0 unlock; Q0 read; P limit-files 4; "
           "P0 read: false [lock: OpenMutex failed] [lock: CreateMutex failed]; P limit-files 1000; "
           "P0 read";
    QTest::newRow("the file of the writer mutex is removed")
        << "P0 write; P remove-files; Q0 write: false; Q0 read: false; Q0 write waiting!: begun; "
           "Q answers: false [lock: WaitForSingleObject failed]; Q0 mode: 0; P0 unlock; Q0 write; "
           "P0 write: false";
    QTest::newRow("the file of a reader mutex is removed")
        << "Q0 read; Q remove-files; P create file0; R0 write: false; R0 write waiting!: begun; "
           "R answers: false [lock: WaitForMultipleObjects failed]; R0 mode: 0; Q0 unlock; R0 write";
    QTest::newRow("who has the lock is stopped") << "P0 write; P stop; Q0 write: false; Q0 read: false; "
                                                    "P kill; Q0 read; Q stop; R0 write: false; R0 read; "
                                                    "Q go";
    QTest::newRow("the primary is stopped")
        << "P isClient: false; P stop; Q isClient; Q send no 100: false; P kill; Q isClient: false";
    QTest::newRow("the files of the primary's mutexes are removed")
        << "P isClient: false; P remove-files; Q isClient; Q send hello; P next: hello; P end; "
           "Q isClient: false";
    QTest::newRow("the primary unlocks")
        << "P isClient: false; P unlock; Q isClient: false [deaf]; P isClient; R send hello; "
           "P next: hello; Q end; "
           "P isClient: false [QLocalServer::listen() called when already listening] "
           "[QtSingleCoreApplication: listen on local socket failed, ]; "
           "P isClient: false; R send again; P next: again; P left: 0";
}

void PosixTest::scenes()
{
    QFETCH(QString, steps);
    steps.replace("[lock: ", "[QtLockedFile::lock(): ")
        .replace("Mutex failed]", "Mutex failed (Too many open files)]")
        .replace(QRegularExpression("(Objects? failed)]"), "\\1 (Stale file handle)]");
    QCOMPARE(KitScene().play(steps.replace("[deaf]", deaf)), QString());
}

/** A user has names of his own where no login session is his: in none, and in that of another user. */
void PosixTest::users()
{
    if (geteuid() != 0) {
        QSKIP("This takes another user.");
    }
    const QString user = QString::number(1000000 + getpid());
    KitScene scene;
    const QString steps =
        "P log-in: *; P become %1; P isClient: false; Q isClient: false; R become %1; R isClient";
    QCOMPARE(scene.play(steps.arg(user)), QString());
    QCOMPARE(QDir::temp().entryList({ QStringLiteral("*-%1-lockfile").arg(user.toInt(), 0, 16) }).size(), 1);
    if (scene.play("S log-in").isEmpty()) {
        QCOMPARE(scene.play("S isClient: false; T log-in; T isClient: false"), QString());
    }
    QDir("/tmp/vantkit-" + user).removeRecursively();
}

/** The socket is its user's alone, whatever the umask, which stays. */
void PosixTest::access()
{
    const KitScene scene;
    const mode_t former = umask(0);
    QtLocalPeer peer(nullptr, sceneIdentity());
    const bool isClient = peer.isClient();
    QCOMPARE(umask(former), mode_t(0));
    QVERIFY(!isClient);
    const auto ofOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(QDir::temp().filePath(scene.socketName())) & ofOthers, QFile::Permissions());
}

void PosixTest::occupiedName_data()
{
    QTest::addColumn<QString>("occupant");
    for (const char* occupant : { "link", "crowded server", "dead server of another user" }) {
        QTest::newRow(occupant) << occupant;
    }
}

/** The name of the socket is left to whom it belongs, and the primary is deaf. */
void PosixTest::occupiedName()
{
    QFETCH(QString, occupant);
    KitScene scene;
    QCOMPARE(scene.play("P identity: *"), QString());
    const QString path = QDir::temp().filePath(scene.socketName());
    QLocalServer server;
    std::vector<std::unique_ptr<QLocalSocket>> crowd;
    if (occupant == "link") {
        QVERIFY(QFile::link(path + "-lockfile", path));
    } else if (occupant == "crowded server") {
        QVERIFY(server.listen(path));
        do { // until no more may wait
            crowd.push_back(std::make_unique<QLocalSocket>());
            crowd.back()->connectToServer(path);
        } while (crowd.back()->state() == QLocalSocket::ConnectedState);
    } else {
        QCOMPARE(scene.play("Q isClient: false; Q kill"), QString());
        if (chown(qPrintable(path), 1, 1) != 0) {
            QSKIP("This takes another user.");
        }
    }
    QCOMPARE(
        scene.play("P isClient: false " + deaf + "; P isClient: false; Q isClient; Q send no 100: false"),
        QString());
    QCOMPARE(QFileInfo(path).isSymLink(), occupant == "link");
    QVERIFY(QFileInfo::exists(path));
}

QTEST_GUILESS_MAIN(PosixTest)

#include "posix-test.moc"
