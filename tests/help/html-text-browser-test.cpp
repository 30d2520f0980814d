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
#include <QtEndian>

#include <cstdlib>
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
    void pageOfSource();
    void imageIsNotTooLarge_data();
    void imageIsNotTooLarge();
    void planted_data();
    void planted();
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
    const auto row = [](const char* name, const char* source, const char* file) {
        QTest::newRow(name) << source << file;
    };
    row("bare name", "new.png", "new.png");
    row("from the folder's parent", "../image/new.png", "new.png");
    row("escaped for the web", "new%25%20.png", "new% .png");
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

// A page of setSource() has its own images, beside it; it does not come back with one of the page after it.
void HtmlTextBrowserTest::pageOfSource()
{
    writeImage("new.png", Qt::red);
    const QString html = "<html>" + image("new.png");
    QFile source(path("image/source.html"));
    QVERIFY(source.open(QIODevice::WriteOnly) && source.write(html.toUtf8()) > 0);
    source.close();
    QImage other(60, 40, QImage::Format_RGB32);
    other.fill(Qt::blue);
    QVERIFY(other.save(path("new.png")));
    Browser browser;
    browser.setSearchPaths({ folder->path() });
    browser.setText(html);
    QCOMPARE(browser.area(Qt::blue).size(), QSize(60, 40));
    browser.setSource(QUrl::fromLocalFile(path("image/source.html")));
    QCOMPARE(browser.area(Qt::red).size(), QSize(60, 40));
    browser.setText(page(base(), "text" + image("new.png")));
    QTRY_COMPARE(browser.area(Qt::red).size(), QSize(60, 40));
    QVERIFY(browser.toPlainText().startsWith("text"));
}

void HtmlTextBrowserTest::imageIsNotTooLarge_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("body");
    for (const char* body : { "<img src='data:image/png;base64,%1' width=60 height=40>",
             "<img src='large.png' width=60 height=40>", "<table background='large.png'><tr><td>text" }) {
        QTest::addRow("small: %s", body) << QSize(60, 40) << body;
        QTest::addRow("large: %s", body) << QSize(10000, 4000) << body;
    }
    QTest::newRow("large, in an icon") << QSize(10000, 4000) << "<img src='large.ico' width=60 height=40>";
}

// One bit for each of its pixels, in a small file.
void HtmlTextBrowserTest::imageIsNotTooLarge()
{
    QFETCH(QSize, size);
    QFETCH(QString, body);
    QImage content(size, QImage::Format_Mono);
    content.setColorTable({ QColor(Qt::red).rgb(), QColor(Qt::red).rgb() });
    content.fill(1);
    QVERIFY(content.save(path("large.png")));
    QFile file(path("large.png"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray png = file.readAll();
    QByteArray icon = QByteArray::fromHex("000001000100"
                                          "2020000001002000"
                                          "00000000"
                                          "16000000")
        + png;
    qToLittleEndian<quint32>(quint32(png.size()), icon.data() + 14);
    QFile iconFile(path("large.ico"));
    QVERIFY(iconFile.open(QIODevice::WriteOnly) && iconFile.write(icon) == icon.size());
    iconFile.close();
    Browser browser;
    browser.setSearchPaths({ folder->path() });
    browser.setText("<html>" + body.replace("%1", png.toBase64()));
    QCOMPARE(browser.area(Qt::red).isEmpty(), size != QSize(60, 40));
}

void HtmlTextBrowserTest::planted_data()
{
    QTest::addColumn<QString>("plant");
    for (const char* plant : { "ln -s VICTIM TRAP", "ln VICTIM TRAP", "mkfifo TRAP" }) {
        QTest::newRow(plant) << plant;
    }
}

// What another user may have put into the image folder is neither written through nor waited for.
void HtmlTextBrowserTest::planted()
{
    QFETCH(QString, plant);
    QFile victim(path("victim"));
    QVERIFY(victim.open(QIODevice::ReadWrite) && victim.putChar('v') && victim.flush());
    QVERIFY(QDir().mkpath(imageFolder()));
    plant.replace("VICTIM", victim.fileName()).replace("TRAP", imageFolder() + "/new.png");
    QCOMPARE(std::system(QFile::encodeName(plant)), 0);
    writeImage("new.png", Qt::red);
    Browser browser;
    browser.setText(page(base(), image("new.png")));
    QTRY_COMPARE(browser.area(Qt::red).size(), QSize(60, 40));
    QCOMPARE(victim.size(), 1);
}

void HtmlTextBrowserTest::downloader_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("result");
    const auto row = [](const char* name, const QString& url, const char* file, int result) {
        QTest::newRow(name) << url << file << result;
    };
    row("there", "data:,content", "content.png", 0);
    row("cannot be written", "data:,content", "no/folder/content.png", 0);
    row("missing", "file:///no/such/file", "content.png", -1);
    row("another machine", "file:///" + QCoreApplication::applicationFilePath(), "content.png", -1);
    row("no URL", "", "content.png", -1);
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
