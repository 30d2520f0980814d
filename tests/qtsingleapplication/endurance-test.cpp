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
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("figures");
    const auto row = [](const char* command, const char* figures) {
        QTest::newRow(command) << QString::fromLatin1(command) << QString::fromLatin1(figures);
    };
    row("starts --processes 20 --rounds 2", "2 rounds of 20 processes: one primary each");
    row("kills --rounds 20", "20 primaries killed and succeeded");
    row("ends --rounds 20", "20 primaries ended and succeeded");
    row("messages --messages 200", "200 messages of 8 clients delivered once");
}

void EnduranceTest::shortForm()
{
    QFETCH(QString, command);
    QFETCH(QString, figures);
    QProcess driver;
    driver.start(QStringLiteral(ENDURANCE_PROGRAM), command.split(QLatin1Char(' ')));
    QVERIFY(driver.waitForFinished(50000));
    QCOMPARE(QString::fromUtf8(driver.readAllStandardError()), QString());
    const QString output = QString::fromUtf8(driver.readAllStandardOutput());
    QVERIFY2(output.contains(figures), qPrintable(output));
    QCOMPARE(driver.exitCode(), 0);
}

QTEST_GUILESS_MAIN(EnduranceTest)

#include "endurance-test.moc"
