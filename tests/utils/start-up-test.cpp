#include "support/guarded-test.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/** What an application meets that leaves out steps of its start-up, and what the kit asks the system once. */
class StartUpTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void steps_data();
    void steps();
};

void StartUpTest::steps_data()
{
    // The probe's commands, and for each of them what it prints; a process that is stopped prints no more.
    QTest::addColumn<QString>("commands");
    QTest::addColumn<QString>("results");
    QTest::addColumn<QString>("warnings");
    const auto row = [](const char* name, const char* commands, const char* results, const char* warnings) {
        QTest::newRow(name) << commands << results << warnings;
    };
    const char* const stop = "ImageManager is not initialized\n";
    row("styles before images", "paths|styles|label", "done\n", stop);
    row("image folder before images", "paths|image_folder|label", "done\n", stop);
    row("temporary folder before images", "paths|temp_image_folder|label", "done\n", stop);
    row("nothing at all", "string|image|label", "ok\nnull\n\n",
        "Cannot find key in ComponentStrings \"ok\"\nCannot load pixmap \"icon\"\n"
        "Cannot find stylesheet \"component.label\"\n");
    row("no resource path", "user_path|images|image_folder", "done\ndone\n/images\n",
        "Cannot find path by key \"resource_path\"\nCannot find path by key \"resource_path\"\n");
    row("no list of images, no template of the combo box", "paths|images|styles|image|combo_box",
        "done\ndone\ndone\nnull\n\tA[b=\"%1\"]{m:8px}\n",
        "Cannot load pixmap \"icon\"\nCannot find stylesheet \"component.combobox\"\n");
    row("zh_TW.UTF-8", "language", "cht\n", "");
    row("nn_NO.UTF-8", "language", "nor\n", "");
    row("C", "language", "enu\n", "");
}

void StartUpTest::steps()
{
    QFETCH(QString, commands);
    QFETCH(QString, results);
    const QTemporaryDir folder;
    QFile templates(folder.filePath("a.style"));
    QVERIFY(templates.open(QIODevice::WriteOnly));
    templates.write("==component.scrollbar==\nA[b=\"%1\"]{m:8px}");
    templates.close();

    QProcess probe;
    probe.setWorkingDirectory(folder.path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", commands == "language" ? QTest::currentDataTag() : "C.UTF-8");
    probe.setProcessEnvironment(environment);
    probe.start(START_UP_PROBE, commands.split('|'));
    QVERIFY(probe.waitForFinished());
    const bool stops = results == "done\n";
    QCOMPARE(probe.exitStatus(), stops ? QProcess::CrashExit : QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), stops ? 6 : 0); // SIGABRT
    QCOMPARE(QString(probe.readAllStandardOutput()), results);
    QTEST(QString(probe.readAllStandardError()), "warnings");
}

QTEST_GUILESS_MAIN(StartUpTest)

#include "start-up-test.moc"
