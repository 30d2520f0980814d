#include "area-of.h"
#include "knowledge-base.h"
#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/help/help-window.h>
#include <vantkit-qt/help/html-text-browser.h>

#include <QDesktopServices>
#include <QDir>
#include <QNetworkProxy>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

// Pages on disk, while no request leads anywhere.
class HelpOfflineTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void page_data();
    void page();
    void imageOfPage_data();
    void imageOfPage();
    void link_data();
    void link();
    void linkToPart();
    void pageWithBase();

    void open(const QUrl& url) { lastOpened = url.toString(); }

    void cleanupTestCase() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

private:
    void write(const QString& name, const QByteArray& content) const;
    HelpContext context(const QString& lang, const QString& link) const;

    QTemporaryDir folder;
    QString lastOpened;
};

namespace {

class Window : public HelpWindow
{
public:
    using HelpWindow::HelpWindow;

    void fallbackOffline() override
    {
        HelpWindow::fallbackOffline();
        ++fallbacks;
    }

    QString text() const { return textBrowser->toPlainText(); }

    QStringList searchPaths() const { return textBrowser->searchPaths(); }

    QUrl source() const { return textBrowser->source(); }

    QScrollBar* scrollBar() const { return textBrowser->verticalScrollBar(); }

    void setText(const QString& text) { textBrowser->setText(text); }

    void followLink()
    {
        QTest::keyClick(textBrowser, Qt::Key_Tab);
        QTest::keyClick(textBrowser, Qt::Key_Return);
    }

    int fallbacks = 0;
};

} // namespace

void HelpOfflineTest::initTestCase()
{
    defaulttheme::load(folder.filePath("user"));
    QNetworkProxy::setApplicationProxy(
        { QNetworkProxy::HttpProxy, "127.0.0.1", KnowledgeBase::closedPort() });
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    write("enu/page.html", "<html><body>English ä</body></html>");
    write("enu/nul.html", QByteArray("<html>before\0after</html>", 25));
    write("enu/plain.txt", "a < b");
    write("ger/page.html", "deutsch");
    write("ger/only.html", "deutsch");
    write("ita/folder.html/page", "");
    QImage image(60, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(folder.filePath("enu/red.png")));
}

void HelpOfflineTest::write(const QString& name, const QByteArray& content) const
{
    QVERIFY(QFileInfo(folder.filePath(name)).dir().mkpath("."));
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

HelpContext HelpOfflineTest::context(const QString& lang, const QString& link) const
{
    HelpContext made;
    made.lang = lang;
    made.link = link;
    made.helpPath = folder.path();
    return made;
}

void HelpOfflineTest::page_data()
{
    QTest::addColumn<QString>("lang");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("searched");
    const auto row = [](const char* name, const char* lang, const char* link, const char* text,
                         const char* searched) {
        QTest::newRow(name) << lang << link << QString::fromUtf8(text) << searched;
    };
    row("present", "enu", "page.html", "English ä", "enu");
    row("renamed language", "deu", "page.html", "deutsch", "ger");
    row("language without pages", "dan", "page.html", "English ä", "enu");
    row("NUL", "enu", "nul.html", "before", "enu");
    row("plain text", "enu", "plain.txt", "a < b", "enu");
    row("missing", "enu", "no.html", "", "enu");
    row("another language only", "enu", "only.html", "", "enu");
    row("no folder", "jpn", "page.html", "", "jpn");
    row("unreadable", "ita", "folder.html", "", "ita");
    row("no link", "enu", "", "", "enu");
}

void HelpOfflineTest::page()
{
    QFETCH(QString, lang);
    QFETCH(QString, link);
    QFETCH(QString, text);
    QFETCH(QString, searched);
    Window window(context(lang, link));
    QCOMPARE(window.searchPaths(), QStringList());
    for (const int times : { 1, 2 }) {
        QTRY_COMPARE(window.fallbacks, times);
        QCOMPARE(window.text(), text);
        QCOMPARE(window.searchPaths(), QStringList(folder.filePath(searched)));
        window.retrieveHelpContent();
    }
}

void HelpOfflineTest::imageOfPage_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QSize>("size");
    QTest::newRow("own size") << "" << QSize(60, 40);
    QTest::newRow("width") << " width=30" << QSize(30, 20);
    QTest::newRow("height") << " height=80" << QSize(120, 80);
    QTest::newRow("both") << " width=10 height=90" << QSize(10, 90);
}

// Pictures are in design pixels, also where the page gives them another size.
void HelpOfflineTest::imageOfPage()
{
    QFETCH(QString, attributes);
    QFETCH(QSize, size);
    write("enu/image.html", "<html><img src=\"red.png\"" + attributes.toLatin1() + "></html>");
    Window window(context("enu", "image.html"));
    window.show();
    QTRY_COMPARE(areaOf(Qt::red, &window).size(), size * displayscale::dpi() / 96);
}

void HelpOfflineTest::link_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("opened");
    const auto row = [](const char* name, const QString& link, const char* text, const char* opened,
                         const char* base = "https://host.invalid/a/") {
        QTest::newRow(name) << link << base << QString::fromUtf8(text) << opened;
    };
    row("page", "%70age.html?a#b", "English ä", "");
    row("up and down", "a/../page.html", "English ä", "");
    row("no page", "no.html", "link", "https://host.invalid/a/no.html");
    row("no page, no base", "no.html", "link", "", "");
    row("no page, base on disk", "no.html", "link", "", "file:///");
    row("folder", "../enu", "link", "https://host.invalid/enu");
    row("above", "../ger/page.html", "link", "https://host.invalid/ger/page.html");
    row("above, escaped", "%2e%2e/ger/page.html", "link", "https://host.invalid/ger/page.html");
    row("image folder", "planted.html", "link", "https://host.invalid/a/planted.html");
    row("root", folder.filePath("enu/page.html"), "link", "", "");
    row("another host", "//other.invalid/page.html", "link", "https://other.invalid/page.html");
    row("mail", "MAILTO:somebody@host.invalid", "link", "mailto:somebody@host.invalid");
    row("web", "http://host.invalid/", "link", "http://host.invalid/");
    row("file", QUrl::fromLocalFile(folder.filePath("enu/page.html")).toString(), "link", "");
    row("script", "javascript:page.html", "link", "");
    row("program", R"(C:\page.html)", "link", "");
}

// It leads to a page on disk, to the system, or nowhere; then what shows stays.
void HelpOfflineTest::link()
{
    QFETCH(QString, link);
    QFETCH(QString, base);
    QFETCH(QString, text);
    QFETCH(QString, opened);
    for (const char* scheme : { "http", "https", "mailto", "file", "javascript", "c" }) {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    write("corvanta_help/image/planted.html", "planted");
    Window window(context("enu", "no.html"));
    QTRY_COMPARE(window.fallbacks, 1);
    const QString html = QStringLiteral("<html>%1<a href=\"%2\">link</a>");
    window.setText(html.arg("<base href=\"https://before.invalid/\">"));
    window.setText(html.arg(base.isEmpty() ? base : "<base href=\"" + base + "\">", link));
    lastOpened.clear();
    window.followLink();
    QCOMPARE(window.text(), text);
    QCOMPARE(lastOpened, opened);
    QCOMPARE(window.source(), QUrl());
}

void HelpOfflineTest::linkToPart()
{
    const QByteArray lines = QByteArray("<p>line</p>").repeated(100);
    write("enu/tall.html",
        "<html><a href='#%C3%A4%20b'>link</a>" + lines + "<p><a name='ä b'>part</a></p>" + lines);
    Window window(context("enu", "no.html"));
    window.show();
    QTRY_COMPARE(window.fallbacks, 1);
    window.setText("<html><a href='tall.html#%C3%A4%20b'>link</a>");
    window.followLink();
    const int place = window.scrollBar()->value();
    QVERIFY(place > 0);
    window.scrollBar()->setValue(0);
    window.followLink();
    QCOMPARE(window.scrollBar()->value(), place);
}

// The base of the page is of the web's making; its images are asked for there, and found beside the page.
void HelpOfflineTest::pageWithBase()
{
    write("enu/base.html", "<html><base href=\"https://host.invalid/\"><img src=\"red.png\">text</html>");
    Window window(context("enu", "base.html"));
    window.show();
    QTRY_COMPARE(window.fallbacks, 1);
    QCOMPARE(window.searchPaths(),
        QStringList({ folder.filePath("corvanta_help/image"), folder.filePath("enu") }));
    QTRY_COMPARE(areaOf(Qt::red, &window).size(), QSize(60, 40) * displayscale::dpi() / 96);
}

QTEST_MAIN(HelpOfflineTest)

#include "help-offline-test.moc"
