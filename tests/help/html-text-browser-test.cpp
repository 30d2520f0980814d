#include "area-of.h"
#include "support/guarded-test.h"

#include <vantkit-qt/help/html-text-browser.h>
#include <vantkit-qt/help/image-downloader.h>

#include <QDir>
#include <QDirIterator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// Pages whose images come from files, from data URLs, which always answer, or from a scheme that never does.
class HtmlTextBrowserTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void downloads_data();
    void downloads();
    void nameLeadsNowhereElse_data();
    void nameLeadsNowhereElse();
    void imageIsSeen_data();
    void imageIsSeen();
    void imageIsSeenAnew();
    void fileIsSeenUnderBothNames();
    void readerIsLeftWhereHeIs();
    void pagesInQuickSuccession();
    void destroyedWhileDownloading();
    void largePage_data();
    void largePage();
    void downloader_data();
    void downloader();

private:
    QString path(const QString& name) const { return folder->filePath(name); }

    QString base() const { return QUrl::fromLocalFile(path(QStringLiteral("image/"))).toString(); }

    QString imageFolder() const { return path(QStringLiteral("temp/corvanta_help/image")); }

    void writeImage(const QString& name, const QColor& color, const QSize& size = QSize(60, 40)) const;

    std::unique_ptr<QTemporaryDir> folder;
};

namespace {

class Browser : public HtmlTextBrowser
{
public:
    Browser()
    {
        resize(400, 300);
        show();
    }

    void reload() override
    {
        HtmlTextBrowser::reload();
        ++reloads;
    }

    QRect area(const QColor& color) { return areaOf(color, viewport()); }

    int reloads = 0;
};

QString page(const QString& base, const QString& body)
{
    return QStringLiteral("<html><head><base href=\"%1\"></head><body>%2</body></html>").arg(base, body);
}

QString image(const QString& source)
{
    return QStringLiteral("<img src=\"%1\">").arg(source);
}

QStringList filesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator iterator(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        files << QDir(folder).relativeFilePath(iterator.next());
    }
    files.sort();
    return files;
}

} // namespace

void HtmlTextBrowserTest::init()
{
    GuardedTest::init();
    qunsetenv("TMPDIR"); // or else the new folder would lie in the old one
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("image")));
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("temp")));
    qputenv("TMPDIR", QFile::encodeName(path(QStringLiteral("temp"))));
}

void HtmlTextBrowserTest::writeImage(const QString& name, const QColor& color, const QSize& size) const
{
    QImage content(size, QImage::Format_RGB32);
    content.fill(color);
    QVERIFY(content.save(path("image/" + name)));
}

void HtmlTextBrowserTest::downloads_data()
{
    const QString base = QStringLiteral("<html><base href=\"data:,\">");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("downloads");
    QTest::newRow("plain text") << "base href=\"data:,\"\n" + image("a") << QStringList() << 0;
    QTest::newRow("no base") << "<html>" + image("a") << QStringList() << 0;
    QTest::newRow("unclosed base") << "<html><base href=\"data:,> <img src='a'>" << QStringList() << 0;
    QTest::newRow("upper-case base") << "<html><BASE HREF=\"data:,\">" + image("a") << QStringList() << 0;
    QTest::newRow("endless base") << page("data:," + QString(5000, 'x'), image("a")) << QStringList() << 0;
    QTest::newRow("first base") << base + "<base href=\"no:\">" + image("a") << QStringList("a") << 1;
    QTest::newRow("before the base") << "<html>" + image("a") + base + image("b") << QStringList("b") << 1;
    QTest::newRow("in a folder") << base + image("a") + image("b/c") << QStringList { "a", "c" } << 2;
    QTest::newRow("source twice") << base + image("a") + image("a") << QStringList("a") << 1;
    QTest::newRow("file twice") << base + image("a") + image("b/a") << QStringList("a") << 2;
    QTest::newRow("case counts") << base + image("a") + image("A") << QStringList { "A", "a" } << 2;
    QTest::newRow("notations") << base + "<IMG src=\"a\"><img SRC=\"b\"><img src='c'>" << QStringList() << 0;
    QTest::newRow("attributes") << base + "<img alt=\"x\"\n src=\"a\" width=\"9\">" << QStringList("a") << 1;
    QTest::newRow("plain search") << base + "<img><a name=\"y\" src=\"a\">" << QStringList("a") << 1;
    QTest::newRow("unclosed source") << base + image("a") + "<img src=\"b>" << QStringList("a") << 1;
    QTest::newRow("no source") << base + image("a") + "<img>" << QStringList("a") << 1;
}

void HtmlTextBrowserTest::downloads()
{
    QFETCH(QString, text);
    QFETCH(QStringList, files);
    QFETCH(int, downloads);
    Browser browser;
    browser.setText(text);
    QTRY_COMPARE(browser.reloads, downloads);
    QCOMPARE(QDir(imageFolder()).entryList(QDir::Files, QDir::Name), files);

    // One more, so that what was not to be fetched has had its time.
    browser.setText(page("data:,", image("last")));
    QTRY_VERIFY(QFile::exists(imageFolder() + "/last"));
    QCOMPARE(browser.reloads, downloads + 1);
}

void HtmlTextBrowserTest::nameLeadsNowhereElse_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("none") << "";
    QTest::newRow("folder") << "image/";
    QTest::newRow("up") << "..";
    QTest::newRow("here") << ".";
    QTest::newRow("up and down") << R"(..\..\escaped.png)";
    QTest::newRow("drive") << "C:escaped.png";
    QTest::newRow("drive and folder") << R"(a/C:\escaped.png)";
    QTest::newRow("device") << "com1.png";
    QTest::newRow("console") << "Con";
    QTest::newRow("control character") << "a\nb";
    QTest::newRow("long") << QString(100000, 'x');
}

void HtmlTextBrowserTest::nameLeadsNowhereElse()
{
    QFETCH(QString, source);
    Browser browser;
    browser.setText(page("data:,", image(source)));
    QTRY_COMPARE(browser.reloads, 1);
    QCOMPARE(filesBelow(folder->path()), QStringList());
}

void HtmlTextBrowserTest::imageIsSeen_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("file");
    QTest::newRow("bare name") << "new.png"
                               << "new.png";
    QTest::newRow("from the folder's parent") << "../image/new.png"
                                              << "new.png";
    QTest::newRow("escaped for the web") << "new%25%20.png"
                                         << "new% .png";
}

void HtmlTextBrowserTest::imageIsSeen()
{
    QFETCH(QString, source);
    QFETCH(QString, file);
    writeImage(file, Qt::red);
    Browser browser;
    browser.setText(page(base(), image(source) + "<p style=\"background-color: blue\">below</p>"));
    const QRect below = browser.area(Qt::blue);
    QVERIFY(!below.isEmpty());
    QCOMPARE(browser.area(Qt::red), QRect());
    QTRY_COMPARE(browser.area(Qt::red).size(), QSize(60, 40));
    QVERIFY(browser.area(Qt::blue).top() > below.top());
}

// The same name for another image, and the page set again: what was seen of the file before is no longer
// true.
void HtmlTextBrowserTest::imageIsSeenAnew()
{
    Browser browser;
    for (const QColor color : { Qt::red, Qt::blue }) {
        writeImage("changing.png", color);
        browser.setText(page(base(), "<p>" + image("changing.png") + "</p>" + image("missing.png")));
        QTRY_COMPARE(browser.area(color).size(), QSize(60, 40));
    }
    QTRY_COMPARE(browser.reloads, 4);
}

// One of the two names leads nowhere on the web, and is found on the disk once the other has come.
void HtmlTextBrowserTest::fileIsSeenUnderBothNames()
{
    writeImage("shared.png", Qt::red);
    QVERIFY(QDir().rename(path("image"), path("other")));
    const QString other = QUrl::fromLocalFile(path("other/")).toString();
    Browser browser;
    browser.setText(
        page(other, "<p>" + image("../image/shared.png") + "</p><p>" + image("shared.png") + "</p>"));
    QTRY_COMPARE(browser.reloads, 2);
    QTRY_VERIFY(browser.area(Qt::red).height() > 2 * 40);
}

void HtmlTextBrowserTest::readerIsLeftWhereHeIs()
{
    writeImage("late.png", Qt::red, QSize(3000, 40));
    Browser browser;
    browser.setText(page(base(), QStringLiteral("<p>line</p>").repeated(100) + image("late.png")));
    browser.verticalScrollBar()->setValue(200);
    QTRY_COMPARE(browser.reloads, 1);
    QTRY_VERIFY(browser.horizontalScrollBar()->maximum() > 0);
    QCOMPARE(browser.verticalScrollBar()->value(), 200);
}

// Two downloads for one image, of which the first fails.
void HtmlTextBrowserTest::pagesInQuickSuccession()
{
    Browser browser;
    browser.setSearchPaths({ "/offline" });
    browser.setText(page(base(), image("same.png")));
    writeImage("same.png", Qt::red);
    browser.setText(page(base(), image("same.png")));
    QCOMPARE(browser.searchPaths(), QStringList({ imageFolder(), imageFolder(), "/offline" }));
    QTRY_COMPARE(browser.reloads, 2);
    QTRY_COMPARE(browser.area(Qt::red).size(), QSize(60, 40));
}

void HtmlTextBrowserTest::destroyedWhileDownloading()
{
    Browser* browser = new Browser;
    browser->setText(page("data:,", image("a") + image("b") + image("c")));
    delete browser;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    Browser next;
    next.setText(page("data:,", image("last")));
    QTRY_COMPARE(next.reloads, 1);
    QCOMPARE(QDir(imageFolder()).entryList(QDir::Files), QStringList("last"));
}

void HtmlTextBrowserTest::largePage_data()
{
    const QString start = QStringLiteral("<html><base href=\"nowhere://\">");
    const QString line = QStringLiteral("<p>A line of text, with <b>bold</b> words.</p>");
    QString images;
    for (int i = 0; i < 10000; ++i) {
        images += "<p>" + image(QString::number(i)) + "</p>";
    }
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("downloads");
    QTest::newRow("20 MB") << start + line.repeated(20000000 / line.size()) << 0;
    QTest::newRow("nested b") << start + QStringLiteral("<b>").repeated(20000) + "end" << 0;
    QTest::newRow("10,000 images") << start + images << 10000;
    QTest::newRow("unclosed quotes") << start + QStringLiteral("<img src=\"a ").repeated(100000) << 1;
    QTest::newRow("no quotes") << start + QStringLiteral("<img src='a ").repeated(100000) << 0;
    QTest::newRow("one source") << start + "<img src=\"" + line.repeated(100000) + "\">" << 1;
}

void HtmlTextBrowserTest::largePage()
{
    QFETCH(QString, text);
    QFETCH(int, downloads);
    Browser browser;
    browser.setText(text);
    QTRY_COMPARE_WITH_TIMEOUT(browser.reloads, downloads, 30000);
    const QScrollBar* scrollBar = browser.verticalScrollBar();
    QTest::keyClick(&browser, Qt::Key_PageDown);
    QCOMPARE(scrollBar->value(), qMin(scrollBar->pageStep(), scrollBar->maximum()));
}

void HtmlTextBrowserTest::downloader_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("result");
    QTest::newRow("there") << "data:,content"
                           << "content.png" << 0;
    QTest::newRow("cannot be written") << "data:,content"
                                       << "no/folder/content.png" << 0;
    QTest::newRow("missing") << "file:///no/such/file"
                             << "content.png" << -1;
    QTest::newRow("no URL") << ""
                            << "content.png" << -1;
}

void HtmlTextBrowserTest::downloader()
{
    QFETCH(QString, url);
    QFETCH(QString, file);
    QFETCH(int, result);
    ImageDownloader downloader(path(file), url);
    QSignalSpy ended(&downloader, &ImageDownloader::sigDownloadFinish);
    QVERIFY(!downloader.isFinished());
    downloader.start();
    QTRY_COMPARE(ended.size(), 1);
    QVERIFY(downloader.isFinished());
    QCOMPARE(ended.constFirst(), QVariantList({ url, result }));
    QCOMPARE(QFile::exists(path(file)), result == 0 && !file.contains('/'));
}

QTEST_MAIN(HtmlTextBrowserTest)

#include "html-text-browser-test.moc"
