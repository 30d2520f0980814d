#include "area-of.h"
#include "knowledge-base.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/help/help-window.h>
#include <vantkit-qt/help/html-text-browser.h>

#include <QDir>
#include <QNetworkProxy>
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
    void imageOfPage();
    void pageWithBase();

    void cleanupTestCase() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

private:
    void write(const QString& name, const QByteArray& content) const;
    HelpContext context(const QString& lang, const QString& link) const;

    QTemporaryDir folder;
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
    QTest::newRow("present") << "enu"
                             << "page.html"
                             << "English ä"
                             << "enu";
    QTest::newRow("renamed language") << "deu"
                                      << "page.html"
                                      << "deutsch"
                                      << "ger";
    QTest::newRow("language without pages") << "dan"
                                            << "page.html"
                                            << "English ä"
                                            << "enu";
    QTest::newRow("NUL") << "enu"
                         << "nul.html"
                         << "before"
                         << "enu";
    QTest::newRow("plain text") << "enu"
                                << "plain.txt"
                                << "a < b"
                                << "enu";
    QTest::newRow("missing") << "enu"
                             << "no.html"
                             << ""
                             << "enu";
    QTest::newRow("another language only") << "enu"
                                           << "only.html"
                                           << ""
                                           << "enu";
    QTest::newRow("no folder") << "jpn"
                               << "page.html"
                               << ""
                               << "jpn";
    QTest::newRow("unreadable") << "ita"
                                << "folder.html"
                                << ""
                                << "ita";
    QTest::newRow("no link") << "enu"
                             << ""
                             << ""
                             << "enu";
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

void HelpOfflineTest::imageOfPage()
{
    write("enu/image.html", "<html><img src=\"red.png\"></html>");
    Window window(context("enu", "image.html"));
    window.show();
    QTRY_COMPARE(areaOf(Qt::red, &window).size(), QSize(60, 40));
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
    QTRY_COMPARE(areaOf(Qt::red, &window).size(), QSize(60, 40));
}

QTEST_MAIN(HelpOfflineTest)

#include "help-offline-test.moc"
