#include "support/guarded-test.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/** What an application meets that leaves out steps of its start-up. */
class StartUpTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void stops_data();
    void stops();
    void goesOn_data();
    void goesOn();

private:
    void run(const QStringList& commands);
    QString write(const QByteArray& text);

    QTemporaryDir folder;
    QProcess probe;
    QStringList results;
    QStringList warnings;
};

namespace {

QStringList linesOf(const QByteArray& output)
{
    return QString::fromUtf8(output).split(QLatin1Char('\n')).mid(0, output.count('\n'));
}

} // namespace

void StartUpTest::run(const QStringList& commands)
{
    probe.setWorkingDirectory(folder.path());
    probe.start(QStringLiteral(START_UP_PROBE), commands);
    QVERIFY(probe.waitForFinished());
    results = linesOf(probe.readAllStandardOutput());
    warnings = linesOf(probe.readAllStandardError());
}

QString StartUpTest::write(const QByteArray& text)
{
    QFile file(folder.filePath(QStringLiteral("one.style")));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? file.fileName() : QString();
}

void StartUpTest::stops_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("styles") << QStringLiteral("styles");
    QTest::newRow("styles of a file without tokens") << QStringLiteral("styles:") + write("==a==\n");
    QTest::newRow("image folder") << QStringLiteral("image_folder");
    QTest::newRow("temporary image folder") << QStringLiteral("temp_image_folder");
}

void StartUpTest::stops()
{
    QFETCH(QString, command);
    run({ QStringLiteral("paths:") + folder.path(), command, QStringLiteral("label") });
    QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
    QCOMPARE(probe.exitCode(), 6); // SIGABRT
    QCOMPARE(results, QStringList { QStringLiteral("done") });
    QCOMPARE(
        warnings, QStringList { QStringLiteral("debug.message warning: ImageManager is not initialized") });
}

void StartUpTest::goesOn_data()
{
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("expectedResults");
    QTest::addColumn<QStringList>("expectedWarnings");
    const auto row = [](const char* name, const QStringList& commands, const QStringList& expectedResults,
                         const QStringList& expectedWarnings) {
        QTest::newRow(name) << commands << expectedResults << expectedWarnings;
    };
    const QString user = QStringLiteral("user_path:") + folder.path();
    const QString paths = QStringLiteral("paths:") + folder.path();
    row("nothing at all",
        { QStringLiteral("path:resource_path"), QStringLiteral("string:ok"), QStringLiteral("image:icon"),
            QStringLiteral("label") },
        { {}, QStringLiteral("ok"), QStringLiteral("null"), {} },
        { QStringLiteral("Cannot find path by key \"resource_path\""),
            QStringLiteral("Cannot find key in ComponentStrings \"ok\""),
            QStringLiteral("Cannot load pixmap \"icon\""),
            QStringLiteral("Cannot find stylesheet \"component.label\"") });
    row("no resource path", { user, QStringLiteral("images"), QStringLiteral("image_folder") },
        { QStringLiteral("done"), QStringLiteral("done"), QStringLiteral("/images") },
        { QStringLiteral("Cannot find path by key \"resource_path\""),
            QStringLiteral("Cannot find path by key \"resource_path\"") });
    row("no list of images and no templates",
        { paths, QStringLiteral("images"), QStringLiteral("styles"), QStringLiteral("image:icon"),
            QStringLiteral("label") },
        { QStringLiteral("done"), QStringLiteral("done"), QStringLiteral("done"), QStringLiteral("null"),
            {} },
        { QStringLiteral("Cannot load pixmap \"icon\""),
            QStringLiteral("Cannot find stylesheet \"component.label\"") });
    row("no template of the combo box",
        { paths, QStringLiteral("images"),
            QStringLiteral("styles:") + write("==component.scrollbar==\nA[b=\"%1\"]{m:8px}"),
            QStringLiteral("combo_box") },
        { QStringLiteral("done"), QStringLiteral("done"), QStringLiteral("done"), {},
            QStringLiteral("A[b=\"%1\"]{m:8px}") },
        { QStringLiteral("Cannot find stylesheet \"component.combobox\"") });
}

void StartUpTest::goesOn()
{
    QFETCH(QStringList, commands);
    QFETCH(QStringList, expectedWarnings);
    run(commands);
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 0);
    QTEST(results, "expectedResults");
    expectedWarnings.replaceInStrings(
        QRegularExpression(QStringLiteral("^")), QStringLiteral("debug.message warning: "));
    QCOMPARE(warnings, expectedWarnings);
}

QTEST_GUILESS_MAIN(StartUpTest)

#include "start-up-test.moc"
