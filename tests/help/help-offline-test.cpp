#include "support/display-scale.h"
#include "support/files.h"
#include "support/spellings.h"
#include "support/themed-test.h"
#include "windows.h"

#include <vantkit-qt/help/image-downloader.h>

#include <QDesktopServices>
#include <QDir>
#include <QNetworkProxy>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

// Pages on disk, while no request leads anywhere, and images from files and from data URLs, which always
// answer.
class HelpOfflineTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void page();
    void sizes();
    void drawing();
    void resources();
    void links();
    void parts();
    void downloads();
    void fetchedImage();
    void readerIsLeftWhereHeIs();
    void otherPages();
    void pageOfSource();
    void downloader();

    void open(const QUrl& url) { opened = url.toString(); }

private:
    QString path(const QString& name) const { return ownFolder.filePath(name); }

    QString base() const { return QUrl::fromLocalFile(path("image/")).toString(); }

    QString imageFolder() const { return path("temp/corvanta_help/image"); }

    void writeImage(const QString& name, const QColor& color, const QSize& size = QSize(60, 40)) const;

    QString opened;
};

namespace {

const QSize usual = QSize(60, 40) * displayscale::dpi() / 96; // of an image

QString pageAt(const QString& base, const QString& body)
{
    return "<html><head><base href=\"" + base + "\"></head><body>" + body + "</body></html>";
}

QString image(const QString& source)
{
    return "<img src=\"" + source + "\">";
}

} // namespace

// A page is in UTF-8 wherever it is read.
void HelpOfflineTest::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    ThemedTest::initTestCase();
    QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, "127.0.0.1", 1 });
    setTemporaryFolder(path("temp"));
    files::write(path("enu/page.html"), "<html><body>English ä</body></html>");
#ifndef Q_OS_WIN // where no file has such a name
    files::write(path("enu/com1.html"), "<html>device");
#endif
    files::write(path("ger/page.html"), QByteArray("<html>before\0after</html>", 25));
    files::write(path("enu/style.css"), "p { background-color: red; }");
    writeImage("enu/red.png", Qt::red);
    writeImage("enu/red.ico", Qt::red);
    writeImage("enu/large.png", Qt::red, QSize(5000, 5000));
    writeImage("enu/larger.png", Qt::red, QSize(5001, 5000));
}

void HelpOfflineTest::init()
{
    GuardedTest::init();
    QVERIFY(QDir(path("temp")).removeRecursively() && QDir().mkpath(path("temp")));
}

void HelpOfflineTest::writeImage(const QString& name, const QColor& color, const QSize& size) const
{
    QImage content(size, QImage::Format_Mono);
    content.setColorTable({ color.rgb(), QColor(Qt::green).rgb() });
    content.fill(0);
    files::write(path(name), "");
    QVERIFY(content.save(path(name), name.endsWith("ico") ? "ICO" : "PNG"));
}

void HelpOfflineTest::page()
{
    const char* const pages[][4] = {
        // language, link, text, folder
        { "enu", "page.html", "English ä", "enu" },
        { "deu", "page.html", "before", "ger" },
        { "dan", "page.html", "English ä", "enu" },
        { "jpn", "page.html", "", "jpn" },
    };
    for (const auto& [lang, link, text, searched] : pages) {
        for (const QString& helpPath : spellings(ownFolder.path())) {
            Window<HelpWindow> window(HelpContext { lang, helpPath, link, "" });
            for (const int times : { 1, 2 }) {
                QTRY_COMPARE(window.fallbacks, times);
                QCOMPARE(window.text(), QString::fromUtf8(text));
                QCOMPARE(window.textBrowser->searchPaths(), QStringList(helpPath + '/' + searched));
                window.retrieveHelpContent();
            }
        }
    }
}

// Pictures are in design pixels, also where the page gives them another size; and there is a base of the
// web's making, whose images are found beside the page.
void HelpOfflineTest::sizes()
{
    const QMap<QString, QSize> sizes = {
        { "", { 60, 40 } },
        { "width=30", { 30, 20 } },
        { "height=80", { 120, 80 } },
        { "width=10 height=90", { 10, 90 } },
    };
    for (auto it = sizes.begin(); it != sizes.end(); ++it) {
        const QString html =
            "<html><base href=\"https://host.invalid/\"><img src=\"red.png\" " + it.key() + ">";
        files::write(path("enu/image.html"), html.toUtf8());
        const QString helpPath = spellings(ownFolder.path()).constLast();
        Window<HelpWindow> window(HelpContext { "enu", helpPath, "image.html", "" });
        window.show();
        QTRY_COMPARE(areaOf(Qt::red, &window).size(), it.value() * displayscale::dpi() / 96);
        QCOMPARE(window.textBrowser->searchPaths(), QStringList({ imageFolder(), helpPath + "/enu" }));

        // A document of the application's own does not know what it is drawn on.
        window.textBrowser->setDocument(new QTextDocument(&window));
        window.textBrowser->setText(html);
        QCOMPARE(areaOf(Qt::red, &window).size(), it.value());
    }
}

// The sign of a missing image has its own size, whatever the page says of the image.
void HelpOfflineTest::drawing()
{
    QImage halves(2, 1, QImage::Format_RGB32);
    halves.setPixelColor(0, 0, Qt::black);
    halves.setPixelColor(1, 0, Qt::blue);
    QVERIFY(halves.save(path("enu/halves.png")));
    Browser browser;
    browser.setSearchPaths({ path("enu") });
    browser.setText("<html><img src='halves.png' width=200 height=100>");
    const QPoint middle = browser.area(Qt::white, false).center();
    const QColor between = browser.viewport()->grab().toImage().pixelColor(middle);
    QVERIFY2(between.blue() > 50 && between.blue() < 200, qPrintable(between.name()));

    browser.setText("<html><img src='no.png' width=200 height=100>");
    const QSize sign = browser.area(Qt::white, false).size();
    QVERIFY(sign.width() > 4 && sign.width() <= 16 * displayscale::dpi() / 96);
}

void HelpOfflineTest::resources()
{
    const auto dataOf = [this](const char* name) {
        return "data:image/png;base64," + QString(files::contentOf(path(name)).toBase64());
    };
    const QString sized = "<img src='%1' width=60 height=40>";
    const QString background = "<table background='%1'><tr><td>text";
    const QString sheet = "<head><link rel='stylesheet' type='text/css' href='%1'></head><p>text</p>";
    const QString absolute = path("enu/");
    const QStringList shown = { image("red.png"), image("own"), sized.arg("large.png"),
        sized.arg(dataOf("enu/red.png")), background.arg("red.png"), sheet.arg("style.css"),
        sheet.arg("data:text/css,p%7Bbackground-color:red%7D") };
    const QStringList refused = { image(absolute + "red.png"), image("file://" + absolute + "red.png"),
        image("red.ico"), sized.arg("larger.png"), sized.arg(dataOf("enu/larger.png")),
        background.arg(absolute + "red.png"), background.arg("larger.png"),
        sheet.arg(absolute + "style.css") };
    Browser browser;
    browser.setSearchPaths({ path("enu") });
    browser.document()->addResource(QTextDocument::ImageResource, QUrl("own"), QPixmap(absolute + "red.png"));
    for (const QString& body : shown + refused) {
        browser.setText("<html>" + body);
        QVERIFY2(browser.area(Qt::red).isEmpty() == refused.contains(body), qPrintable(body.left(100)));
    }
    browser.setText("<html>" + image(":/qt-project.org/styles/commonstyle/images/dirclosed-32.png"));
    QVERIFY(browser.area(Qt::white, false).width() > 20 * displayscale::dpi() / 96);
}

// They lead to a page on disk, to the system, or nowhere; then what shows stays.
void HelpOfflineTest::links()
{
    const char* const away = "https://host/a/";
    const char* const links[][4] = {
        // base, link, text, address for the system
        { away, "%70age.html?a#b", "English ä", "" },
        { away, "a/../page.html", "English ä", "" },
        { away, "no.html", "link", "https://host/a/no.html" },
        { "", "no.html", "link", "" },
        { "file:///", "no.html", "link", "" },
        { away, "%2e%2e/ger/page.html", "link", "https://host/ger/page.html" },
        { away, "com1.html", "link", "https://host/a/com1.html" },
        { away, "planted.html", "link", "https://host/a/planted.html" },
        { away, "/page.html", "link", "https://host/page.html" },
        { away, "//other/page.html", "link", "https://other/page.html" },
        { away, "MAILTO:somebody@host", "link", "mailto:somebody@host" },
        { away, "http://host/page.html", "link", "http://host/page.html" },
        { away, "file:page.html", "link", "" },
        { away, "javascript:page.html", "link", "" },
    };
    for (const char* scheme : { "http", "https", "mailto", "file", "javascript" }) {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    files::write(path("temp/corvanta_help/image/planted.html"), "planted");
    Window<HelpWindow> window(HelpContext { "enu", ownFolder.path(), "no.html", "" });
    QTRY_COMPARE(window.fallbacks, 1);
    for (const auto& [base, link, text, opens] : links) {
        const QString html = QString("<html><a href=\"%1\">link</a>").arg(link);
        window.textBrowser->setText(pageAt("https://before/", ""));
        window.textBrowser->setText(*base ? pageAt(base, html) : html);
        opened.clear();
        QTest::keyClick(window.textBrowser, Qt::Key_Tab);
        QTest::keyClick(window.textBrowser, Qt::Key_Return);
        QVERIFY2(window.text() == QString::fromUtf8(text) && opened == opens, link);
        QCOMPARE(window.textBrowser->source(), QUrl());
    }
}

void HelpOfflineTest::parts()
{
    const QByteArray lines = QByteArray("<p>line</p>").repeated(100);
    files::write(path("enu/tall.html"), "<html>" + lines + "<p><a name='ä b'>part</a></p>" + lines);
    Browser browser;
    browser.setSearchPaths({ path("enu") });
    browser.followLink(QUrl("tall.html#%C3%A4%20b"));
    const int place = browser.verticalScrollBar()->value();
    QVERIFY(place > 0);
    browser.followLink(QUrl("#"));
    QCOMPARE(browser.verticalScrollBar()->value(), 0);
    browser.followLink(QUrl("#%C3%A4%20b"));
    QCOMPARE(browser.verticalScrollBar()->value(), place);

    QWidget parent;
    parent.setStyleSheet("QToolTip { padding: 0px; }"); // which keeps the window's sheet from no scroll bar
    const Window<BrowserWindow> window(&parent);
    QCOMPARE(window.textBrowser->verticalScrollBar()->sizeHint().width(), 12 * displayscale::dpi() / 96);
}

// Each is one download.
void HelpOfflineTest::downloads()
{
    const QString base = "<html><base href=\"data:,\">";
    const QList<QPair<QString, QStringList>> pages = {
        { "plain\n<base href=\"data:,\">" + image("a"), {} },
        { "<html>" + image("a"), {} },
        { "<html><base href=\"data:,> <img src='a'>", {} },
        { pageAt("data:," + QString(2042, 'x'), image("a")), { "a" } },
        { pageAt("data:," + QString(2043, 'x'), image("a")), {} },
        { base + "<base href=\"no:\">" + image("a"), { "a" } },
        { "<html>" + image("a") + base + image("b"), { "b" } },
        { base + image("a") + image("b/c") + image("a"), { "a", "c" } },
        { base + "<IMG src=\"a\"><img SRC=\"b\"><img src='c'>", {} },
        { base + "<img><a name=\"y\" src=\"a\">", { "a" } },
        { base + image("a") + "<img src=\"b>", { "a" } },
        { base + image("a") + "<img>", { "a" } },
    };
    for (const auto& [text, files] : pages) {
        Browser browser;
        browser.setText(text);
        QTRY_COMPARE(browser.reloads, files.size());
        QCOMPARE(QDir(imageFolder()).entryList(QDir::Files, QDir::Name), files);

        // One more, so that what was not to be fetched has had its time.
        browser.setText(pageAt("data:,", image("last")));
        QTRY_VERIFY(QFile::exists(imageFolder() + "/last"));
        QCOMPARE(browser.reloads, files.size() + 1);
        QDir(imageFolder()).removeRecursively();
    }
    const QStringList elsewhere = { "", "..", R"(..\x)", "C:x", "com1.png", "Con", "a\nb" };
    Browser browser;
    browser.setText(pageAt("data:,", image(elsewhere.join("\"><img src=\""))));
    QTRY_COMPARE(browser.reloads, elsewhere.size());
    QCOMPARE(QDir(imageFolder()).entryList(QDir::Files), QStringList());
}

// Each is seen anew if the page is set again. What another user may have put into the image folder is not
// written through.
void HelpOfflineTest::fetchedImage()
{
    files::write(path("victim"), "v");
    QVERIFY(QDir().mkpath(imageFolder()) && QFile::link(path("victim"), imageFolder() + "/a.png"));
    const char* const images[][2] = { { "a.png", "a.png" }, { "../image/b", "b" }, { "c%25%20d", "c% d" } };
    for (const auto& [source, file] : images) {
        Browser browser;
        for (const QColor color : { Qt::red, Qt::green }) {
            writeImage(QString("image/") + file, color);
            browser.setText(pageAt(base(), image(source)));
            QCOMPARE(browser.area(color), QRect());
            QTRY_COMPARE(browser.area(color).size(), usual);
        }
    }
    QCOMPARE(QFileInfo(path("victim")).size(), 1);
}

void HelpOfflineTest::readerIsLeftWhereHeIs()
{
    writeImage("image/late.png", Qt::red);
    Browser browser;
    browser.setText(pageAt(base(),
        "<table width=3000><tr><td>wide</table>" + QString("<p>line</p>").repeated(100) + image("late.png")));
    browser.horizontalScrollBar()->setValue(50);
    browser.verticalScrollBar()->setValue(200);
    QTRY_COMPARE(browser.reloads, 1);
    QCOMPARE(browser.horizontalScrollBar()->value(), 50);
    QCOMPARE(browser.verticalScrollBar()->value(), 200);
}

// What comes for a page before, under the same name, is not shown by the page that is there.
void HelpOfflineTest::otherPages()
{
    writeImage("image/new.png", Qt::red);
    writeImage("own/new.png", Qt::blue);
    Browser browser;
    browser.setSearchPaths({ path("own") });
    browser.setText(pageAt(base(), image("new.png")));
    browser.setText(pageAt("no:", image("new.png")));
    QCOMPARE(browser.searchPaths(), QStringList({ imageFolder(), imageFolder(), path("own") }));
    QCOMPARE(browser.area(Qt::blue).size(), usual);
    QTRY_COMPARE(browser.reloads, 2);
    QCoreApplication::processEvents();
    QCOMPARE(browser.area(Qt::blue).size(), usual);
    browser.setText(pageAt("no:", image("new.png")));
    QCOMPARE(browser.area(Qt::red).size(), usual);
    browser.setText("<html>" + image("new.png"));
    QCOMPARE(browser.area(Qt::blue).size(), usual);
}

// A page of setSource() has its own images, beside it; it does not come back with one of the page after it.
void HelpOfflineTest::pageOfSource()
{
    writeImage("image/new.png", Qt::red);
    files::write(path("image/source.html"), "<html><img src='new.png'>");
    Browser browser;
    browser.setSource(QUrl::fromLocalFile(path("image/source.html")));
    QCOMPARE(browser.area(Qt::red).size(), usual);
    browser.setText(pageAt(base(), "text" + image("new.png")));
    QTRY_COMPARE(browser.area(Qt::red).size(), usual);
    QVERIFY(browser.toPlainText().startsWith("text"));
}

void HelpOfflineTest::downloader()
{
    const std::tuple<QString, QString, int> downloads[] = {
        { "data:,content", "content", 0 },
        { "data:,content", "no/folder/content", 0 },
        { "file:///no/such/file", "missing", -1 },
        { "file:////" + QCoreApplication::applicationFilePath().mid(1), "of another machine", -1 },
    };
    for (const auto& [url, file, result] : downloads) {
        ImageDownloader downloader(path(file), url);
        QSignalSpy ended(&downloader, &ImageDownloader::sigDownloadFinish);
        QVERIFY(!downloader.isFinished());
        downloader.start();
        QTRY_COMPARE(ended.size(), 1);
        QVERIFY(downloader.isFinished());
        QCOMPARE(ended.constFirst(), QVariantList({ url, result }));
        QCOMPARE(QFile::exists(path(file)), file == "content");
    }
}

QTEST_MAIN(HelpOfflineTest)

#include "help-offline-test.moc"
