#include "support/files.h"
#include "support/guarded-test.h"
#include "support/program.h"

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
        files::write(folder.filePath("a.style"), "==component.scrollbar==\nA[b=\"%1\"]{m:8px}");

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
            const QString arguments = folder.path() + '|' + row[0];
            const Outcome probe = runProgram(START_UP_PROBE, arguments.split('|'),
                { "LC_ALL=zh_TW.UTF-8", "LANG=zh_TW.UTF-8" }); // Qt asks the latter first on Windows
            QCOMPARE(probe.exitCode, row[2] == stop ? abortCode : 0);
            QCOMPARE(probe.output, row[1]);
            QCOMPARE(probe.errors, row[2]);
        }
    }
};

QTEST_GUILESS_MAIN(StartUpTest)

#include "start-up-test.moc"
