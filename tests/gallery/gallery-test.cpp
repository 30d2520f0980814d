#include "support/files.h"
#include "support/guarded-test.h"
#include "support/program.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

/** The gallery as a program: what it refuses, and the pictures that it takes. */
class GalleryTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void answers_data()
    {
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("word");
        const auto row = [](const char* arguments, int exitCode, const char* word) {
            QTest::newRow(arguments) << exitCode << word;
        };
        files::write(m_folder.filePath("file"), {});

        row("--help", 0, "--screenshots");
        row("--page knobs", 2, "knobs");
        row("--lang en", 2, "'en'");
        row("--theme nowhere", 2, "nowhere");
        row("--screenshots file/in", 2, "file/in");
        row("--trust file", 2, "file");
        row("buttons", 2, "buttons");
        row("--startup-times --screenshots pictures", 2, "--startup-times");
    }

    /** Without a display: a program that wanted one would end with an error of its own. */
    void answers()
    {
        QFETCH(int, exitCode);
        QFETCH(QString, word);
        const Outcome outcome = runProgram(GALLERY_PROGRAM, QString(QTest::currentDataTag()).split(' '),
            { "QT_QPA_PLATFORM=there-is-none" }, m_folder.path());
        QCOMPARE(outcome.exitCode, exitCode);
        const bool isRefused = exitCode != 0;
        QVERIFY2((isRefused ? outcome.errors : outcome.output).contains(word), qPrintable(outcome.errors));
        QCOMPARE(isRefused ? outcome.output : outcome.errors, QString());
    }

    /** Of the page with the most states, half of which wait for an answer. */
    void takesPictures()
    {
        const QDir pictures(m_folder.filePath("pictures"));
        const Outcome outcome =
            runProgram(GALLERY_PROGRAM, { "--screenshots", pictures.path(), "--page", "sheets" },
                { "XDG_DATA_HOME=" + m_folder.filePath("data") });
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.errors, QString());
        QVERIFY2(!QFileInfo::exists(m_folder.filePath("data")), "pictures leave nothing behind");
        QSet<QByteArray> seen;
        for (const QFileInfo& file : pictures.entryInfoList(QDir::Files)) {
            const QImage image(file.filePath());
            QVERIFY2(image.width() == 1100 && image.height() >= 720, qPrintable(file.fileName()));
            seen += QByteArray(reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes()));
        }
        QCOMPARE(seen.size(), 13); // each unlike the others
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(GalleryTest)

#include "gallery-test.moc"
