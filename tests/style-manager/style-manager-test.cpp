#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>

#include <QRandomGenerator>
#include <QRegExp>
#include <QtTest>

class StyleManagerTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sections_data();
    void sections();
    void scaledAtRequest();
    void filesAreOneText();
    void secondInitialize();
    void slashesInFolder();
    void badFiles();
    void removesCommentsLikeTheirExpressions();
    void unclosedComments_data();
    void unclosedComments();

private:
    void initialize(const QByteArray& text);

    ThemeFolder theme;
};

namespace {

QString raw(const char* key)
{
    return getStyleSheet(key, true);
}

} // namespace

void StyleManagerTest::initTestCase()
{
    theme.initializeImages(ImageManager::LazyLoad);
}

void StyleManagerTest::initialize(const QByteArray& text)
{
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("kit.style"), text) });
}

void StyleManagerTest::sections_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("text"); // of the section "a"
    const auto row = [this](const char* name, const QByteArray& file, const char* text) {
        QTest::newRow(name) << file
                            << QString::fromUtf8(text)
                                   .replace(
                                       QLatin1String("IMAGES"), ImageManager::getInstance().getImageFolder())
                                   .replace(QLatin1String("TMP"),
                                       theme.userFolder() + QLatin1String("/tmp_images"));
    };
    row("two lines", "==a==\nx\ny", "\nx\ny");
    row("no lines", "==a==", "");
    row("an empty line", "==a==\n\n==b==", "\n");
    row("blanks in the header", "== a ==\nx", "\nx");
    row("marks inside the header", "== =a= = ==\nx", "\nx");
    row("blank before the header", "==a==\n ==b==\nx", "\n ==b==\nx");
    row("blank behind the header", "==a==\n==b== \nx", "\n==b== \nx");
    row("half a header", "==a==\n==b=\n=b==\nx", "\n==b=\n=b==\nx");
    row("last text wins", "==a==\nx\n==b==\ny\n==a==\nz", "\nz");
    row("text before the first header", "x\ny\n==a==\nz", "\nx\ny\nz");
    row("lines of an empty key go on", "==b==\nw\n==\nx\n== ==\ny\n==a==\nz", "\nx\ny\nz");
    row("three marks", "===\nx\n==a==\ny", "\nx\ny");
    row("worked example", "==a==\nx: 10px; // note\ny: url(IMG_LOC/b.png);",
        "\nx: 10px; y: url(IMAGES/b.png);");
    row("tokens", "==a==\nTMPIMG_LOC IMG_LOC\nxTMPIMG_LOCyIMG_LOC img_loc",
        "\nTMP IMAGES\nxTMPyIMAGES img_loc");
    row("token in a comment", "==a==\nx/*IMG_LOC*/y", "\nxy");
    row("block comments", "==a==\n1/*2*/3/*4\n==b==\n5*/6/**/7*/", "\n1367*/");
    row("block comment on its own line", "==a==\nx\n/* c */\ny", "\nx\n\ny");
    row("no comment inside its own mark", "==a==\nx/*/y*/z", "\nxz");
    row("comment in a header", "==a/*b*/==\nx", "\nx");
    row("line comment behind a header", "==a==\nx\n==b== // c\ny", "\nx\n==b== y");
    row("line comment before a header", "==a==\nx // c\n==b==\ny", "\nx ==b==\ny");
    row("line comment at the end", "==a==\nx // c", "\nx ");
    row("block comment inside a line comment", "==a==\nx // c /* d\n==b==\n*/ e\ny", "\nx y");
    row("line comment inside a block comment", "==a==\nx /* // c */ d\ny", "\nx  d\ny");
    row("marks that only meet afterwards", "==a==\nx /*c*// y\nz", "\nx / y\nz");
    row("line comment that a block comment leaves", "==a==\nx //*c*/ y\nz", "\nx / y\nz");
    row("DOS line ends", "==a==\r\nx\r\ny\r\n", "\nx\ny\n");
    row("UTF-8",
        "==a==\nGr\xc3\xb6\xc3\x9f"
        "e",
        "\nGröße");
    row("byte order mark", "\xef\xbb\xbf==a==\nx", "\nx");
    row("NUL", QByteArray("==a==\nx\0y\n==a==\nz", 18), "\nx");
    row("no UTF-8", "==a==\n\xff", "\n\xef\xbf\xbd");
}

void StyleManagerTest::sections()
{
    QFETCH(QByteArray, file);
    initialize("==a==\nof the row before");
    initialize(file);
    QTEST(raw("a"), "text");
}

void StyleManagerTest::scaledAtRequest()
{
    initialize("==scaled==\nx: 10px 3px 12px; // note\ny: url(IMG_LOC/b.png);");
    const QString url = QStringLiteral("y: url(%1/b.png);").arg(ImageManager::getInstance().getImageFolder());
    const auto sheet = [&url](const char* values) {
        return QLatin1String("\nx: ") + QLatin1String(values) + QLatin1String("; ") + url;
    };
    QCOMPARE(getStyleSheet("scaled", true), sheet("10px 3px 12px"));
    const QString onDisplay =
        sheet(displayscale::pick("10px 3px 12px", "12px 3px 15px", "15px 4px 18px", "20px 6px 24px"));
    QCOMPARE(getStyleSheet("scaled", false), onDisplay);
    QCOMPARE(getStyleSheet(QStringLiteral("scaled")), onDisplay);
}

void StyleManagerTest::filesAreOneText()
{
    const QString first = theme.write(QStringLiteral("1.style"), "==one==\nx\n==two==\ny /* c");
    const QString second = theme.write(QStringLiteral("2.style"), "d */ z\n==one==\nlast");
    const QString missing = theme.path(QStringLiteral("no.style"));
    log.expect(QStringLiteral("file \"%1\" not exist").arg(missing));
    StyleManager::getInstance().initialize({ first, missing, second });
    QCOMPARE(raw("one"), QStringLiteral("\nlast"));
    QCOMPARE(raw("two"), QStringLiteral("\ny  z"));
}

void StyleManagerTest::secondInitialize()
{
    initialize("==kept==\nx\n==replaced==\ny");
    initialize("==replaced==\nz\n==Kept==\nw");
    StyleManager::getInstance().initialize({});
    QCOMPARE(raw("kept"), QStringLiteral("\nx"));
    QCOMPARE(raw("replaced"), QStringLiteral("\nz"));
    log.expect(QStringLiteral("Cannot find stylesheet \"KEPT\""), 2);
    QCOMPARE(getStyleSheet("KEPT", false), QString());
    QCOMPARE(getStyleSheet(QStringLiteral("KEPT"), true), QString());
}

void StyleManagerTest::slashesInFolder()
{
    ThemeFolder::setPaths(QStringLiteral("/proc//none"), QStringLiteral("/proc/none"));
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    initialize("==slashes==\nurl(IMG_LOC/b.png);\nurl(TMPIMG_LOC/b.png)");
    QCOMPARE(raw("slashes"), QStringLiteral("\nurl(/procurl(/proc/none/tmp_images/b.png)"));
    theme.initializeImages(ImageManager::LazyLoad);
}

void StyleManagerTest::badFiles()
{
    QByteArray noise;
    QRandomGenerator random(7);
    while (noise.size() < 100'000) {
        noise += static_cast<char>(random.bounded(1, 256));
    }
    noise.replace('/', '_').replace('=', '_'); // what opens comments and sections has tests of its own
    const QString binary = theme.write(QStringLiteral("binary"), "\n==binary==\n" + noise);
    const QString empty = theme.write(QStringLiteral("empty"), {});
    const QString last = theme.write(QStringLiteral("last"), "\n==behind==\nx");
    const QString directory = theme.path(QStringLiteral("images"));
    StyleManager::getInstance().initialize({ empty, directory, binary, directory, last });
    QCOMPARE(raw("behind"), QStringLiteral("\nx"));
    QVERIFY(raw("binary").size() > 1000);
}

void StyleManagerTest::removesCommentsLikeTheirExpressions()
{
    QRegExp block(QStringLiteral("/\\*.*\\*/"));
    QRegExp line(QStringLiteral("//.*\n"));
    block.setMinimal(true);
    line.setMinimal(true);
    QRandomGenerator random(11);
    for (int round = 0; round < 500; ++round) {
        QString text = QStringLiteral(".\n");
        for (int i = 0; i < 20; ++i) {
            text += QStringLiteral("/*a\n").at(random.bounded(4));
        }
        initialize("==random==\n" + text.toUtf8() + '.');
        text += QStringLiteral(".\n");
        text.remove(block).remove(line);
        QCOMPARE(
            raw("random"), QLatin1Char('\n') + (text.endsWith(QLatin1Char('\n')) ? text.chopped(1) : text));
    }
}

void StyleManagerTest::unclosedComments_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("block comments") << QByteArray("/* unclosed ");
    QTest::newRow("line comments, one line") << QByteArray("// unclosed ");
    QTest::newRow("both") << QByteArray("//* unclosed");
    QTest::newRow("half marks") << QByteArray("/ * unclosed");
}

void StyleManagerTest::unclosedComments()
{
    QFETCH(QByteArray, piece);
    QElapsedTimer timer;
    timer.start();
    initialize("==long==\nx" + piece.repeated(100'000));
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    const bool isLineComment = piece.startsWith("//");
    QCOMPARE(raw("long").size(), 2 + (isLineComment ? 0 : 100'000 * piece.size()));
}

QTEST_MAIN(StyleManagerTest)

#include "style-manager-test.moc"
