#include "support/guarded-test.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/** What an application meets that leaves out steps of its start-up. */
class StartUpTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void leavesOut_data();
    void leavesOut();

private:
    QTemporaryDir folder;
};

namespace {

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char('|'));
}

QStringList linesOf(const QByteArray& output)
{
    return QString::fromUtf8(output).split(QLatin1Char('\n')).mid(0, output.count('\n'));
}

} // namespace

void StartUpTest::leavesOut_data()
{
    // The probe's commands, and for each of them what it prints; a process that is stopped prints no more.
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("results");
    QTest::addColumn<QStringList>("warnings");
    const auto row = [](const char* name, const char* commands, const char* results, const char* warnings) {
        QTest::newRow(name) << words(commands) << words(results) << words(warnings);
    };
    const char* const stop = "ImageManager is not initialized";
    row("styles before images", "paths|styles:a.style|label", "done", stop);
    row("no styles before images", "paths|styles|label", "done", stop);
    row("image folder before images", "paths|image_folder|label", "done", stop);
    row("temporary folder before images", "paths|temp_image_folder|label", "done", stop);
    row("nothing at all", "string:ok|image:icon|label", "ok|null|",
        "Cannot find key in ComponentStrings \"ok\"|Cannot load pixmap \"icon\""
        "|Cannot find stylesheet \"component.label\"");
    row("no resource path", "user_path|images|image_folder", "done|done|/images",
        "Cannot find path by key \"resource_path\"|Cannot find path by key \"resource_path\"");
    row("no list of images, no templates", "paths|images|styles|image:icon|label", "done|done|done|null|",
        "Cannot load pixmap \"icon\"|Cannot find stylesheet \"component.label\"");
    row("no template of the combo box", "paths|images|styles:a.style|combo_box",
        "done|done|done|\tA[b=\"%1\"]{m:8px}", "Cannot find stylesheet \"component.combobox\"");
}

void StartUpTest::leavesOut()
{
    QFETCH(QStringList, commands);
    QFETCH(QStringList, results);
    QFile templates(folder.filePath(QStringLiteral("a.style")));
    QVERIFY(templates.open(QIODevice::WriteOnly));
    templates.write("==component.scrollbar==\nA[b=\"%1\"]{m:8px}");
    templates.close();

    QProcess probe;
    probe.setWorkingDirectory(folder.path());
    probe.start(QStringLiteral(START_UP_PROBE), commands);
    QVERIFY(probe.waitForFinished());
    const bool goesOn = commands.size() == results.size();
    QCOMPARE(probe.exitStatus(), goesOn ? QProcess::NormalExit : QProcess::CrashExit);
    QCOMPARE(probe.exitCode(), goesOn ? 0 : 6); // SIGABRT
    QCOMPARE(linesOf(probe.readAllStandardOutput()), results);
    QTEST(linesOf(probe.readAllStandardError()), "warnings");
}

QTEST_GUILESS_MAIN(StartUpTest)

#include "start-up-test.moc"
