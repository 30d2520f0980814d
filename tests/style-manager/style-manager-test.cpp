#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/spellings.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>

#include <QTextCodec>
#include <QWidget>
#include <QtTest>

class StyleManagerTest : public GuardedTest
{
    Q_OBJECT

    /** The section "a" after @p text was read. */
    QString sectionIn(const QByteArray& text)
    {
        StyleManager::getInstance().initialize({ theme.write("kit.style", text) });
        return getStyleSheet("a", true);
    }

    ThemeFolder theme;

private Q_SLOTS:

    void initTestCase()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
        theme.initializeImages(ImageManager::LazyLoad);
    }

    void sections_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("text"); // of the section "a"
        const auto row = [](const char* name, const QByteArray& file, const char* text) {
            QTest::newRow(name) << file << QString(text);
        };
        row("no lines", "==a==", "");
        row("blanks and marks in the header", "== =a= = ==\nx", "\nx");
        row("no headers", "==a==\n ==b==\n==b== \n==b=\n=b==\nx", "\n ==b==\n==b== \n==b=\n=b==\nx");
        row("last text wins", "==a==\nx\n==b==\ny\n==a==\nz", "\nz");
        row("text before the first header", "x\ny\n==a==\nz", "\nx\ny\nz");
        row("lines of an empty key go on", "==b==\nw\n==\nx\n== ==\ny\n===\n==a==\nz", "\nx\ny\nz");
        row("tokens", "==a==\nxTMPIMG_LOCyIMG_LOC img_loc", "\nxTMPyIMAGES img_loc");
        row("block comments", "==a==\n1/*2*/3/*4\n==b==\n5*/6/**/7*/", "\n1367*/");
        row("marks that overlap", "==a==\n1/*/2*/3//*4*/5\n6//*7*//8\n9", "\n13/5\n69");
        row("comment in a header", "==a/*b*/==\nx", "\nx");
        row("line comment behind a header", "==a==\nx\n==b== // c\ny", "\nx\n==b== y");
        row("line comments", "==a==\nx // c\n==b==\ny // d", "\nx ==b==\ny ");
        row("block comment inside a line comment", "==a==\nx // c /* d\n==b==\n*/ e\ny", "\nx y");
        row("DOS line ends", "==a==\r\nx\r\ny\r\n", "\nx\ny\n");
        row("byte order mark and UTF-8", "\xef\xbb\xbf==a==\nGr\xc3\xb6\xc3\x9f", "\nGröß");
        row("NUL", QByteArray("==a==\nx\0y\n==a==\nz", 18), "\nx");
    }

    void sections()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, text);
        sectionIn("==a==\nof the row before");
        text.replace("IMAGES", theme.path("images"));
        QCOMPARE(sectionIn(file), text.replace("TMP", theme.userFolder() + "/tmp_images"));
    }

    /** Two slashes before a machine's name would begin a comment; only Windows has such folders. */
    void foldersOfTheSystem()
    {
        theme.writeList({}, { "red" });
        theme.writeImage("red", { 32, 32 }, Qt::red);
        for (const QString& folder : spellings(theme.path("."))) {
            ThemeFolder::setPaths(folder, folder + "/user");
            ImageManager::getInstance().initialize(ImageManager::LazyLoad);
            for (const QByteArray file : { "IMG_LOC/red", "TMPIMG_LOC/tmp_red" }) {
                QWidget widget;
                widget.setStyleSheet(sectionIn("==a==\nborder-image: url(\"" + file + ".png\")"));
                QCOMPARE(widget.grab().toImage().pixelColor(9, 9), QColor(Qt::red));
            }
        }
        theme.initializeImages(ImageManager::LazyLoad);
    }

    void scaledAtRequest()
    {
        const QString raw = "\nx: 10px 3px 12px;";
        QCOMPARE(sectionIn("==a==\nx: 10px 3px 12px;"), raw);
        const QString scaled = displayscale::pick(
            "\nx: 10px 3px 12px;", "\nx: 12px 3px 15px;", "\nx: 15px 4px 18px;", "\nx: 20px 6px 24px;");
        QCOMPARE(getStyleSheet("a"), scaled);
        QCOMPARE(getStyleSheet(QString("a")), scaled);
        QCOMPARE(getStyleSheet(QString("a"), true), raw);
    }

    void filesAreOneText()
    {
        const QString first = theme.write("1.style", "==one==\nx\n==two==\ny /* c");
        const QString second = theme.write("2.style", "d */ z\n==one==\nlast");
        const QString last = theme.write("3.style", "==three==\n\xff");
        const QString missing = theme.path("no.style");
        log.expect("file \"" + missing + "\" not exist");
        const QString directory = theme.path("images");
        const QString empty = theme.write("empty.style", {});
        StyleManager::getInstance().initialize({ first, missing, second, directory, empty, last });
        QCOMPARE(getStyleSheet("one", true), QString("\nlast\n\n"));
        QCOMPARE(getStyleSheet("two", true), QString("\ny  z"));
        QCOMPARE(getStyleSheet("three", true), QString("\n\xef\xbf\xbd"));
    }

    void secondInitialize()
    {
        sectionIn("==a==\nx\n==kept==\ny");
        QCOMPARE(sectionIn("==a==\nz"), QString("\nz"));
        QCOMPARE(getStyleSheet("kept", true), QString("\ny"));
        log.expect("Cannot find stylesheet \"Kept\"", 2);
        QCOMPARE(getStyleSheet("Kept") + getStyleSheet(QString("Kept"), true), QString());
    }

    /** Takes minutes, and the test its limit, if every mark is sought to the end. */
    void unclosedComments()
    {
        QCOMPARE(sectionIn("==a==\nx" + QByteArray("/* unclosed ").repeated(100'000)).size(), 1'200'002);
        QCOMPARE(sectionIn("==a==\nx" + QByteArray("//* unclosed").repeated(100'000)), QString("\nx"));
    }
};

QTEST_MAIN(StyleManagerTest)

#include "style-manager-test.moc"
