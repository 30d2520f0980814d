#include "qtsingleapplication/kit-scene.h"
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
    QTest::newRow("a writer keeps all others out")
        << "P0 write; P0 mode: 2; Q0 write: false; Q0 read: false; P1 read: false; P owned: writer; "
           "P0 write; P0 unlock; P0 unlock; P0 mode: 0; Q0 write; P0 write: false; Q0 none; P0 read";
    QTest::newRow("readers keep writers out")
        << "P0 read; P0 mode: 1; Q0 read; P1 read; P1 read; R owned: 0 1 2; Q1 write: false; Q1 mode: 0; "
           "P0 unlock; Q0 none; R0 write: false; R owned: 2; P1 unlock; R0 write; R owned: writer";
    QTest::newRow("a change of mode gives up the old lock first")
        << "P0 read; Q0 read; P0 write: false; P0 mode: 0; R owned: 1; Q0 unlock; P0 write; P0 read; "
           "P0 mode: 1; R owned: 0; Q0 read";
    QTest::newRow("the lowest free slot")
        << "P0 read; P1 read; Q0 read; P2 read; P1 unlock; P0 unlock; P2 read; R owned: 2 3; R0 read; "
           "R owned: 0 2 3";
    QTest::newRow("a writer takes what others have merely open")
        << "P create file0 file7 file63; Q0 write; Q owned: writer 0 7 63; Q0 unlock; Q owned: ; "
           "Q0 write; Q0 shut; Q0 new other; R0 read; R owned: 0";
    QTest::newRow("a writer waits for all readers, and nobody passes him")
        << "P0 read; Q0 read; P1 read; R0 write waiting!: begun; S owned becomes writer 0 1 2; P0 unlock; "
           "S0 read: false; S0 write: false; Q0 unlock; R waits; P1 unlock; R answers; R0 mode: 2; "
           "S0 read: false";
    QTest::newRow("a reader waits for the writer")
        << "P0 write; Q0 read waiting!: begun; R0 read: false; Q waits; P0 unlock; Q answers; R owned: 0";
    QTest::newRow("a writer was killed while others wait")
        << "P0 write; Q0 write waiting!: begun; R0 read: false; Q waits; P kill; Q answers; Q kill; R0 write";
    QTest::newRow("readers were killed while a writer waits")
        << "P0 read; Q0 read; P1 read; R0 write waiting!: begun; S owned becomes writer 0 1 2; P kill; "
           "Q0 mode: 1; R waits; Q kill; R answers; S0 read: false";
    QTest::newRow("an object is deleted") << "P0 write; P0 new other; Q0 write; Q0 unlock; P0 read; P0 new "
                                             "other; Q0 write; P1 shut; P1 new other";
    QTest::newRow("a file is closed under its lock")
        << "P0 write; P0 shut; P0 unlock: false [unlock: file is not opened]; P0 mode: 2; "
           "P0 read: false [lock: file is not opened]; Q0 write: false; P0 reopen; P0 unlock; Q0 write; "
           "Q0 shut; Q0 new other; P0 write";
    QTest::newRow("no truncation")
        << "P0 shut; P0 truncate: false [open: Truncate mode not allowed.]; P0 reopen; P0 write";
    QTest::newRow("paths")
        << "P0 new File; Q0 new fILE; P0 write; Q0 write: false; Q1 new other; Q1 write; P owned: writer";
    QTest::newRow("no handle for the writer mutex")
        << "P0 mode: 0; P1 write; P1 unlock; P limit 0; P0 write: false [lock: CreateMutex failed]; "
           "P0 mode: 0; P limit 1000; P0 write";
    QTest::newRow("a reader mutex that cannot be opened")
        << "P0 write; P0 unlock; Q0 read; P limit 0; "
           "P0 read: false [lock: OpenMutex failed] [lock: CreateMutex failed]; P limit 1000";
    QTest::newRow("the file of the writer mutex is removed")
        << "P0 write; P remove-files; Q0 write: false; Q0 read: false; Q0 write waiting!: begun; "
           "Q answers: false [lock: WaitForSingleObject failed]; Q0 mode: 0; P0 unlock; Q0 write; P0 write: "
           "false";
    QTest::newRow("the file of a reader mutex is removed")
        << "Q0 read; Q remove-files; P create file0; R0 write: false; R0 write waiting!: begun; "
           "R answers: false [lock: WaitForMultipleObjects failed]; R0 mode: 0; Q0 unlock; R0 write";
    QTest::newRow("who has the lock is stopped") << "P0 write; P stop; Q0 write: false; Q0 read: false; P "
                                                    "kill; Q0 read; Q stop; R0 write: false; R0 read; Q go";
}

void LockedFileTest::locks()
{
    QFETCH(QString, steps);
    steps.replace(QRegularExpression("\\[(\\w+): "), "[QtLockedFile::\\1(): ")
        .replace(QRegularExpression("(Mutex failed)]"), "\\1 (Too many open files)]")
        .replace(QRegularExpression("(Objects? failed)]"), "\\1 (Stale file handle)]");
    QCOMPARE(KitScene().play(steps), QString());
}

void LockedFileTest::manyReaders()
{
    KitScene scene;
    QString all = "0";
    QCOMPARE(scene.play("Q0 read"), QString());
    for (int reader = 1; reader < 64; ++reader) {
        QCOMPARE(scene.play(QStringLiteral("%1%2 read").arg(reader % 2 ? 'P' : 'Q').arg(reader)), QString());
        all += QStringLiteral(" %1").arg(reader);
    }
    const QString steps =
        "R0 read: false %1; R0 mode: 0; R0 read waiting!: begun; R answers: false %1; R owned: %2; "
        "R0 write: false; P17 unlock; R0 read; R owned: %2; R1 read: false %1";
    QCOMPARE(scene.play(steps.arg("[QtLockedFile::lock(): too many readers]", all)), QString());
}

QTEST_GUILESS_MAIN(LockedFileTest)

#include "locked-file-test.moc"
