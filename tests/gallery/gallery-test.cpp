#include "support/guarded-test.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/** The gallery as a program: what it refuses, and the pictures that it takes. */
class GalleryTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void takesEveryPicture();
    void startsOnAnyDataFolder();

private:
    QTemporaryDir m_folder;
};

namespace {

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors; ///< without what the offscreen platform says of itself
};

Outcome runGallery(const QStringList& arguments, const QStringList& variables)
{
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() + variables);
    process.start(GALLERY_PROGRAM, arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    QString errors = QString::fromUtf8(process.readAllStandardError());
    errors.remove(QRegularExpression("This plugin does not support [^\\n]*\\n"));
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()), errors };
}

} // namespace

void GalleryTest::answers_data()
{
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("word");
    const auto row = [](const char* arguments, int exitCode, const char* word) {
        QTest::newRow(arguments) << exitCode << word;
    };
    QFile file(m_folder.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));

    row("--help", 0, "--screenshots");
    row("--version", 0, "gallery ");
    row("--page knobs", 2, "knobs");
    row("--page", 2, "--page");
    row("--lang en", 2, "'en'");
    row("--theme nowhere", 2, "nowhere");
    row("--screenshots file/in", 2, "file/in");
    row("--trust file", 2, "file");
    row("--colour", 2, "colour");
    row("buttons", 2, "buttons");
    row("--startup-times --screenshots pictures", 2, "--startup-times");
}

/** Without a display: a program that wanted one would end with an error of its own. */
void GalleryTest::answers()
{
    QFETCH(int, exitCode);
    QFETCH(QString, word);
    QDir::setCurrent(m_folder.path());
    const Outcome outcome =
        runGallery(QString(QTest::currentDataTag()).split(' '), { "QT_QPA_PLATFORM=there-is-none" });
    QCOMPARE(outcome.exitCode, exitCode);
    const bool isRefused = exitCode != 0;
    QVERIFY2((isRefused ? outcome.errors : outcome.output).contains(word), qPrintable(outcome.errors));
    QCOMPARE(isRefused ? outcome.output : outcome.errors, QString());
}

void GalleryTest::takesEveryPicture()
{
    const QDir pictures(m_folder.filePath("pictures"));
    const Outcome outcome = runGallery({ "--screenshots", pictures.path(), "--lang", "enu" },
        { "XDG_DATA_HOME=" + m_folder.filePath("data") });
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QString());
    QVERIFY2(!QFileInfo::exists(m_folder.filePath("data")), "pictures leave nothing behind");
    QMap<QByteArray, QString> seen;
    for (const QString& name : pictures.entryList(QDir::Files)) {
        const QImage image(pictures.filePath(name));
        QVERIFY2(image.width() == 1100 && image.height() >= 720, qPrintable(name));
        const QByteArray pixels(reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes()));
        QVERIFY2(!seen.contains(pixels), qPrintable(name + " looks like " + seen.value(pixels)));
        seen.insert(pixels, name);
    }
    QVERIFY(seen.size() > 80);
}

/** In style sheets "//" begins a comment, and the data folder stands in them. */
void GalleryTest::startsOnAnyDataFolder()
{
    const Outcome outcome =
        runGallery({ "--startup-times" }, { "XDG_DATA_HOME=" + m_folder.path() + "//data" });
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QString());
    QVERIFY(outcome.output.contains("first_paint"));
}

QTEST_GUILESS_MAIN(GalleryTest)

#include "gallery-test.moc"
