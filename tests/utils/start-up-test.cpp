#include "support/guarded-test.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_WIN
constexpr int abortCode = 3;
#else
constexpr int abortCode = 6; // SIGABRT
#endif

/** What an application meets that leaves out steps of its start-up, and what the kit asks the system once. */
class StartUpTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void steps()
    {
        const QTemporaryDir folder;
        QFile templates(folder.filePath("a.style"));
        QVERIFY(templates.open(QIODevice::WriteOnly));
        templates.write("==component.scrollbar==\nA[b=\"%1\"]{m:8px}");
        templates.close();

        // The probe's commands, what they print, and the warnings; a process that is stopped prints no more.
        const char* const stop = "ImageManager is not initialized\n";
        const QStringList rows[] { { "paths|styles|label", "done\n", stop },
            { "paths|image_folder|label", "done\n", stop },
            { "string|image|label", "ok\nnull\n\n",
                "Cannot find key in ComponentStrings \"ok\"\nCannot load pixmap \"icon\"\n"
                "Cannot find stylesheet \"component.label\"\n" },
            { "user_path|images|image_folder", "done\ndone\n/images\n",
                "Cannot find path by key \"resource_path\"\nCannot find path by key \"resource_path\"\n" },
            { "paths|images|styles|image|combo_box", "done\ndone\ndone\nnull\n\tA[b=\"%1\"]{m:8px}\n",
                "Cannot load pixmap \"icon\"\nCannot find stylesheet \"component.combobox\"\n" },
            { "language", "cht\n", "" } };
        for (const QStringList& row : rows) {
            QProcess probe;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("LC_ALL", "zh_TW.UTF-8");
            environment.insert("LANG", "zh_TW.UTF-8"); // which Qt asks first on Windows
            probe.setProcessEnvironment(environment);
            const QString arguments = folder.path() + '|' + row[0];
            probe.start(START_UP_PROBE, arguments.split('|'), QIODevice::ReadOnly | QIODevice::Text);
            QVERIFY(probe.waitForFinished());
            QCOMPARE(probe.exitCode(), row[2] == stop ? abortCode : 0);
            QCOMPARE(QString(probe.readAllStandardOutput()), row[1]);
            QCOMPARE(QString(probe.readAllStandardError()), row[2]);
        }
    }
};

QTEST_GUILESS_MAIN(StartUpTest)

#include "start-up-test.moc"
