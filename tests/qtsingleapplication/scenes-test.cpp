#include "qtsingleapplication/kit-scene.h"
#include "support/guarded-test.h"

#include <QtTest>

/** Who has the lock of a file or is the primary process, among the processes P, Q, R and S. */
class ScenesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void scenes_data();
    void scenes();
    void manyReaders();
};

void ScenesTest::scenes_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("a writer keeps all others out")
        << "P0 write; P0 mode: 2; Q0 write: false; Q0 read: false; P1 read: false; P owned: writer; P0 "
           "write; "
           "P0 unlock; P0 unlock; P0 mode: 0; Q0 write; P0 write: false; Q0 none; P0 read";
    QTest::newRow("readers keep writers out, take the lowest free slot, and leave nothing")
        << "P0 read; P0 mode: 1; Q0 read; P1 read; P2 read; R owned: 0 1 2 3; Q1 write: false; Q1 mode: 0; "
           "P1 unlock; P0 unlock; P2 read; R0 read; R owned: 0 1 3; R0 write: false; R0 mode: 0; Q0 unlock; "
           "R owned: 3; P2 write; R owned: writer; P2 read; P2 mode: 1; R owned: 0; P2 unlock; "
           "R open file0: missing; R open file1: missing; R open file3: missing";
    QTest::newRow("a writer takes what others have merely open")
        << "P create file0 file7 file63; Q0 write; R owned: writer 0 7 63; Q0 unlock; R owned: ; "
           "P close file0 file7 file63; R open file0: missing; R open file63: missing";
    QTest::newRow("a writer waits for all readers, and nobody passes him")
        << "P0 read; Q0 read; P1 read; R0 write waiting!: begun; S owned becomes writer 0 1 2; P0 unlock; "
           "S0 read: false; S0 write: false; Q0 unlock; R waits; P kill; R answers; R0 mode: 2; S0 read: "
           "false";
    QTest::newRow("others wait for a writer, who is killed in the end")
        << "P0 write; Q0 read waiting!: begun; R0 read: false; Q waits; P0 unlock; Q answers; R owned: 0; "
           "Q0 none; P0 write; Q0 write waiting!: begun; Q waits; P kill; Q answers; R0 read: false";
    QTest::newRow("paths in any case, and an object that is deleted")
        << "P0 new File; Q0 new fILE; P0 write; Q0 write: false; P owned: writer; P0 new other; Q0 write; P0 "
           "write";
    QTest::newRow("a file is closed under its lock, and not to be truncated")
        << "P0 write; P0 shut; P0 unlock: false [QtLockedFile::unlock(): file is not opened]; P0 mode: 2; "
           "P0 read: false [QtLockedFile::lock(): file is not opened]; Q0 write: false; "
           "P0 truncate: false [QtLockedFile::open(): Truncate mode not allowed.]; P0 reopen; P0 unlock; Q0 "
           "write";

    QTest::newRow("nobody is primary unasked, or sends to himself")
        << "R identity: scene; P send no: false; P isClient: false; Q isClient; R isClient; P send no: "
           "false; "
           "Q send hello; R send; P next: hello; P next: ; P left: 0";
    QTest::newRow("the primary ends, the next one is killed, and that after it unlocks")
        << "P isClient: false; Q isClient; P end; Q send no: false; R isClient; R send a; Q next: a; Q left: "
           "0; "
           "Q kill; R send no: false; R isClient: false; S send b; R next: b; R unlock; R unlock; R end; "
           "S isClient: false; P send c; S next: c";
}

void ScenesTest::scenes()
{
    QFETCH(QString, steps);
    QCOMPARE(KitScene().play(steps), QString());
}

void ScenesTest::manyReaders()
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

QTEST_GUILESS_MAIN(ScenesTest)

#include "scenes-test.moc"
