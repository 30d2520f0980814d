#include "qtsingleapplication/scene.h"
#include "support/guarded-test.h"

#include <QtTest>

/** Who has the lock of a file, and who does not, among objects in three processes P, Q and R. */
class LockedFileTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void locks_data();
    void locks();
    void manyReaders();
};

void LockedFileTest::locks_data()
{
    QTest::addColumn<QString>("steps");
    const auto row = [](const char* name, const char* steps) {
        QTest::newRow(name) << QString::fromLatin1(steps);
    };
    row("no lock", "P0 mode: 0; P0 unlock; P0 none; P owned: ");
    row("a writer keeps all others out",
        "P0 write; P0 mode: 2; Q0 write: false; Q0 read: false; P1 read: false; P owned: writer; "
        "P0 write; P0 unlock; P0 mode: 0; Q0 write; P0 write: false; Q0 none; P0 read");
    row("a reader keeps writers out",
        "P0 read; P0 mode: 1; Q0 read; P1 read; R owned: 0 1 2; Q1 write: false; P0 read; "
        "P0 unlock; Q0 none; P1 unlock; Q1 write; R owned: writer");
    row("a writer that is refused leaves nothing behind",
        "P0 read; Q0 write: false; Q0 mode: 0; R owned: 0; R0 read; R0 unlock; P0 unlock; R0 write");
    row("a change of mode gives up the old lock first",
        "P0 read; Q0 read; P0 write: false; P0 mode: 0; R owned: 1; Q0 unlock; P0 write; P0 read; P0 mode: "
        "1; "
        "R owned: 0; Q0 read");
    row("the lock that is held already stays as it is", "P0 read; P1 read; P0 unlock; P1 read; Q owned: 1");
    row("the lowest free slot",
        "P0 read; P1 read; Q0 read; P2 read; P1 unlock; P0 unlock; R0 read; R owned: 0 2 3; R1 read; R "
        "owned: "
        "0 1 2 3");
    row("a writer sees readers behind gaps",
        "P0 read; P1 read; Q0 read; P0 unlock; P1 unlock; R0 write: false; Q0 unlock; R0 write");
    row("a writer takes what others have merely open",
        "P create 0; P create 7; P create 63; Q0 write; Q owned: writer 0 7 63; Q0 unlock; Q owned: ; R0 "
        "read; R owned: 0");
    row("a writer waits for all readers, and nobody passes him",
        "P0 read; Q0 read; P1 read; R0 write!: begun; S owned becomes writer 0 1 2; P0 unlock; S0 read: "
        "false; "
        "S0 write: false; Q0 unlock; S0 read: false; R waits; P1 unlock; R answers; R0 mode: 2; S0 read: "
        "false");
    row("a reader waits for the writer",
        "P0 write; Q0 read!: begun; P0 mode: 2; R0 read: false; Q waits; P0 unlock; Q answers; R owned: 0");
    row("a writer waits for the writer",
        "P0 write; Q0 write!: begun; P0 mode: 2; R0 read: false; Q waits; P0 unlock; Q answers; R owned: "
        "writer");
    row("a writer was killed", "P0 write; Q0 write: false; P kill; Q0 write; R0 read: false");
    row("a writer was killed while others wait",
        "P0 write; Q0 write!: begun; R0 read: false; P kill; Q answers");
    row("readers were killed",
        "P0 read; P1 read; Q0 write: false; P kill; R0 read; R owned: 0; R0 unlock; Q0 write");
    row("readers were killed while a writer waits",
        "P0 read; Q0 read; P1 read; R0 write!: begun; S owned becomes writer 0 1 2; P kill; Q0 mode: 1; R "
        "waits; "
        "Q kill; R answers; S0 read: false");
    row("an object is deleted",
        "P0 write; P0 delete; Q0 write; Q0 unlock; P0 read; P0 delete; Q0 write; P1 close; P1 delete");
    row("a file is closed under its lock",
        "P0 write; P0 close; P0 unlock: false [QtLockedFile::unlock(): file is not opened]; P0 mode: 2; "
        "P0 read: false [QtLockedFile::lock(): file is not opened]; P0 none: false "
        "[QtLockedFile::lock(): file is not opened]; Q0 write: false; P0 open; P0 unlock; Q0 write");
    row("a closed file with a lock is deleted",
        "P0 write; P0 close; P0 delete; Q0 write; P1 close; P1 delete");
    row("no truncation",
        "P0 close; P0 truncate: false [QtLockedFile::open(): Truncate mode not allowed.]; "
        "P0 write: false [QtLockedFile::lock(): file is not opened]; P0 open; P0 write");
    row("paths that differ in case", "P0 new File; Q0 new fILE; P0 write; Q0 write: false; P owned: writer");
    row("other paths do not meet", "P0 new one; Q0 new other; P0 write; Q0 write");
    row("a new name does not count any more",
        "P0 write; P0 unlock; P0 close; P0 rename other; P0 open; P0 read; Q owned: 0; Q0 write: false; "
        "Q1 new other; Q1 write");
    row("no handle for the writer mutex",
        "P0 mode: 0; P1 write; P1 unlock; P limit 0; P0 write: false [QtLockedFile::lock(): CreateMutex "
        "failed "
        "(Too many open files)]; P0 mode: 0; P limit -1; P0 write");
    row("no handle for a reader mutex",
        "P0 write; P0 unlock; P limit 0; P0 read: false [QtLockedFile::lock(): CreateMutex failed (Too many "
        "open "
        "files)]; P0 mode: 0; Q0 write; Q0 unlock; P limit -1; P0 read");
    row("a reader mutex that cannot be opened",
        "P0 write; P0 unlock; Q0 read; P limit 0; P0 read: false [QtLockedFile::lock(): OpenMutex failed "
        "(Too many "
        "open files)] [QtLockedFile::lock(): CreateMutex failed (Too many open files)]; P0 write: true "
        "[QtLockedFile::lock(): OpenMutex failed (Too many open files)]; Q owned: writer 0; P limit -1");
    row("waiting for the writer fails",
        "P0 write; P0 unlock; Q0 write; P limit 0; P0 write!: begun; P answers: false "
        "[QtLockedFile::lock(): WaitForSingleObject failed (Too many open files)]; P0 mode: 0; P limit -1");
    row("waiting for the readers fails",
        "P0 write; P0 unlock; Q0 read; P limit 2; P0 write!: begun; P answers: false "
        "[QtLockedFile::lock(): WaitForMultipleObjects failed (Too many open files)]; P0 mode: 0; Q owned: "
        "0; "
        "Q1 read; Q1 unlock; Q0 unlock; P limit -1; P0 write");
}

void LockedFileTest::locks()
{
    QFETCH(QString, steps);
    Scene scene;
    QCOMPARE(scene.play(steps), QString());
    QCOMPARE(scene.finish(), QString());
}

void LockedFileTest::manyReaders()
{
    Scene scene;
    QStringList busy;
    for (int reader = 0; reader < 64; ++reader) {
        QCOMPARE(scene.play(QStringLiteral("%1%2 read").arg(QLatin1Char(reader % 2 ? 'P' : 'Q')).arg(reader)),
            QString());
        busy += QString::number(reader);
    }
    const QString all = busy.join(QLatin1Char(' '));
    const QString refused = QStringLiteral("false [QtLockedFile::lock(): too many readers]");
    QCOMPARE(
        scene.play(QStringLiteral("R0 read: %1; R0 mode: 0; R0 read!: begun; R answers: %1; R owned: %2; "
                                  "R0 write: false; P17 unlock; R0 read; R owned: %2; R1 read: %1")
                       .arg(refused, all)),
        QString());
    QCOMPARE(scene.finish(), QString());
}

QTEST_GUILESS_MAIN(LockedFileTest)

#include "locked-file-test.moc"
