#include "support/guarded-test.h"

#include <QProcess>
#include <QtTest>

/** The drivers of tools/endurance, for as long as a test may take. */
class EnduranceTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void shortForm_data();
    void shortForm();
};

void EnduranceTest::shortForm_data()
{
    QTest::addColumn<QString>("figures");
    QTest::newRow("starts --processes 20 --rounds 2") << "2 rounds of 20 processes: one primary each";
    QTest::newRow("kills --rounds 20") << "20 primaries killed and succeeded";
    QTest::newRow("ends --rounds 20") << "20 primaries ended and succeeded";
    QTest::newRow("messages --messages 200") << "200 messages of 8 clients delivered once";
}

void EnduranceTest::shortForm()
{
    QFETCH(QString, figures);
    QProcess driver;
    driver.start(ENDURANCE_PROGRAM, QString(QTest::currentDataTag()).split(' '));
    QVERIFY(driver.waitForFinished(50000));
    QCOMPARE(driver.readAllStandardError(), QByteArray());
    const QString output = driver.readAllStandardOutput();
    QVERIFY2(output.contains(figures), qPrintable(output));
    QCOMPARE(driver.exitCode(), 0);
}

QTEST_GUILESS_MAIN(EnduranceTest)

#include "endurance-test.moc"
