#include "area-of.h"
#include "knowledge-base.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/help/help-window.h>
#include <vantkit-qt/help/html-text-browser.h>

#include <QDir>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>

Q_DECLARE_METATYPE(HelpContext)

// The roads to the knowledge base, against a real server.
class HelpOnlineTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase();

    void init();
    void query_data();
    void query();
    void answer_data();
    void answer();
    void failure_data();
    void failure();
    void reloadDuringRequest();
    void twoWindows();
    void windowGoesDuringRequest_data();
    void windowGoesDuringRequest();
    void helpWithImages();
    void imagesOfAllKinds();
    void earlierDownloadFails();
    void downloadsEnd();
    void imagesOfAnotherPage();

    void cleanupTestCase() { server.reset(); }

private:
    QStringList imageFiles() const;

    QTemporaryDir userFolder;
    std::optional<KnowledgeBase> server;
    std::unique_ptr<QTemporaryDir> folder;
};

namespace {

class Window : public BrowserWindow
{
public:
    explicit Window(const QString& path) { reload(KnowledgeBase::url(path)); }

    Window() = default;

    void fallbackOffline() override { ++fallbacks; }

    QString text() const { return textBrowser->toPlainText(); }

    int fallbacks = 0;
    QSignalSpy aborts { this, &BrowserWindow::sigAbortRequest };
};

class Browser : public HtmlTextBrowser
{
public:
    Browser()
    {
        resize(400, 500);
        show();
    }

    void showImages(const QStringList& names)
    {
        const QString base = KnowledgeBase::url(QStringLiteral("/images/")).toString();
        QString html = QStringLiteral("<html><base href=\"%1\">").arg(base);
        for (const QString& name : names) {
            html += QStringLiteral("<p><img src=\"%1\"></p>").arg(name);
        }
        setText(html);
    }

    void reload() override
    {
        HtmlTextBrowser::reload();
        ++reloads;
    }

    using HtmlTextBrowser::slotDownloadFinished;

    QRect redArea() { return areaOf(Qt::red, viewport()); }

    int reloads = 0;
};

QString shownText(const BrowserWindow& window)
{
    return window.findChild<HtmlTextBrowser*>()->toPlainText();
}

} // namespace

void HelpOnlineTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
    server.emplace();
}

void HelpOnlineTest::init()
{
    GuardedTest::init();
    qunsetenv("TMPDIR"); // or else the new folder would lie in the old one
    folder = std::make_unique<QTemporaryDir>();
    qputenv("TMPDIR", QFile::encodeName(folder->path()));
    server->useCertificate("good");
}

QStringList HelpOnlineTest::imageFiles() const
{
    return QDir(folder->filePath("corvanta_help/image")).entryList(QDir::Files, QDir::Name);
}

void HelpOnlineTest::query_data()
{
    QTest::addColumn<HelpContext>("context");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("version");
    const auto row = [](const char* name, const HelpContext& context, const char* keys,
                         const char* version = "1.0") { QTest::newRow(name) << context << keys << version; };
    row("renamed", { "deu", "", "a.html", "b" }, "section=b&lang=ger&link=a.html");
    row("no pages", { "tha", "", "a.html", "b" }, "section=b&lang=enu&link=a.html");
    row("same code", { "cht", "", "a.html", "b" }, "section=b&lang=cht&link=a.html");
    row("case counts", { "DEU", "", "a.html", "b" }, "section=b&lang=DEU&link=a.html");
    row("version", { "ita", "", "a.html", "b", "2.5" }, "section=b&lang=ita&link=a.html", "2.5");
    row("nothing", {}, "section&lang&link");
    row("escaped", { "e&u=", "", "a b/#ä?.html", "50% \"%20\"" },
        "section=50%25%20%22%2520%22&lang=e%26u%3D&link=a%20b/%23%C3%A4?.html");
}

void HelpOnlineTest::query()
{
    QFETCH(HelpContext, context);
    QFETCH(QString, keys);
    QFETCH(QString, version);
    HelpWindow window(context);
    QTRY_COMPARE(shownText(window),
        QString("/cgi/knowledgebase/?action=findHelpFile&" + keys
            + "&unique=corvanta_utility_help&version=" + version));
}

void HelpOnlineTest::answer_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << "/some/path"
                           << "/some/path";
    QTest::newRow("redirect") << "/redirect"
                              << "elsewhere";
    QTest::newRow("NUL") << "/nul"
                         << "before";
}

void HelpOnlineTest::answer()
{
    QFETCH(QString, path);
    QFETCH(QString, text);
    Window window(path);
    QTRY_COMPARE(window.text(), text);
    QCOMPARE(window.fallbacks, 0);
    QCOMPARE(window.aborts.size(), 0);
}

void HelpOnlineTest::failure_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("certificate");
    QTest::newRow("404") << KnowledgeBase::url("/not-found") << "good";
    QTest::newRow("cut short") << KnowledgeBase::url("/cut") << "good";
    QTest::newRow("unknown authority") << KnowledgeBase::url("/page") << "unknown";
    QUrl refused("https://127.0.0.1/");
    refused.setPort(KnowledgeBase::closedPort());
    QTest::newRow("refused") << refused << "";
    QTest::newRow("unknown scheme") << QUrl("nowhere://host/") << "";
    QTest::newRow("empty") << QUrl() << "";
}

void HelpOnlineTest::failure()
{
    QFETCH(QUrl, url);
    QFETCH(QString, certificate);
    Window window("/shown before");
    QTRY_COMPARE(window.text(), QStringLiteral("/shown%20before"));

    if (certificate.isEmpty()) {
        KnowledgeBase::goDirectly();
    } else {
        server->useCertificate(certificate);
    }
    window.reload(url);
    QTRY_COMPARE_WITH_TIMEOUT(window.fallbacks, 1, 30000);
    QCOMPARE(window.text(), QStringLiteral("/shown%20before"));

    server->useCertificate("good");
    window.reload(KnowledgeBase::url("/shown/after"));
    QTRY_COMPARE(window.text(), QStringLiteral("/shown/after"));
    QCOMPARE(window.fallbacks, 1);
}

// What is answered last shows, whatever was asked last.
void HelpOnlineTest::reloadDuringRequest()
{
    Window window("/after/first/page");
    window.init(); // once more, which drops nothing
    window.reload(KnowledgeBase::url("/after/second/page"));
    KnowledgeBase::take("second");
    QTRY_COMPARE(window.text(), QStringLiteral("/after/second/page"));
    KnowledgeBase::take("first");
    QTRY_COMPARE(window.text(), QStringLiteral("/after/first/page"));
    QCOMPARE(window.fallbacks, 0);
}

void HelpOnlineTest::twoWindows()
{
    Window failing("/not-found");
    Window window("/some/path");
    emit failing.sigAbortRequest(); // the requests of the one window are none of the other's
    QTRY_COMPARE(window.text(), QStringLiteral("/some/path"));
    QTRY_COMPARE(failing.fallbacks, 1);
    QCOMPARE(window.fallbacks, 0);
}

void HelpOnlineTest::windowGoesDuringRequest_data()
{
    QTest::addColumn<QString>("when");
    for (const char* when : { "closed", "deleted", "in exec", "in fall-back" }) {
        QTest::newRow(when) << when;
    }
}

void HelpOnlineTest::windowGoesDuringRequest()
{
    // What an application may do in its fall-back: show something that waits for the user, and be closed
    // meanwhile.
    class Impatient : public BrowserWindow
    {
    public:
        void fallbackOffline() override
        {
            QEventLoop loop;
            QTimer::singleShot(0, this, [this] {
                delete this;
                QCoreApplication::processEvents();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            });
            connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
            loop.exec();
        }
    };

    QFETCH(QString, when);
    const QString turn = QStringLiteral("gone ") + when;
    const QPointer<BrowserWindow> window = new Impatient;
    window->reload(KnowledgeBase::url(when == "in fall-back" ? "/not-found" : "/after/" + turn));
    window->show();
    if (when == "closed") {
        window->close();
        KnowledgeBase::take(turn);
        QTRY_COMPARE(shownText(*window), QStringLiteral("/after/gone%20closed"));
    }
    if (when == "in exec") {
        QTimer::singleShot(0, window, [window] { delete window; });
        QCOMPARE(window->exec(), int(QDialog::Rejected));
    } else if (when != "in fall-back") {
        delete window;
    }
    QTRY_VERIFY(!window);
    KnowledgeBase::take(turn); // the answer to nobody
}

void HelpOnlineTest::helpWithImages()
{
    HelpContext context;
    context.link = "page";
    HelpWindow window(context);
    window.show();
    QTRY_COMPARE(areaOf(Qt::red, &window).size(), QSize(60, 40));
    QCOMPARE(imageFiles(), QStringList("red.png"));
}

void HelpOnlineTest::imagesOfAllKinds()
{
    Browser browser;
    browser.showImages({ "not-found.png", "no-image.png", "cut.png", "red.png" });
    QTRY_COMPARE(browser.reloads, 4);
    QTRY_COMPARE(browser.redArea().size(), QSize(60, 40));
    QCOMPARE(imageFiles(), QStringList({ "no-image.png", "red.png" }));
}

void HelpOnlineTest::earlierDownloadFails()
{
    Browser browser;
    browser.showImages({ "fails-first.png" });
    browser.showImages({ "fails-first.png" });
    QTRY_COMPARE(browser.reloads, 1);
    KnowledgeBase::take("fails-first");
    QTRY_COMPARE(browser.redArea().size(), QSize(60, 40));
    QCOMPARE(browser.reloads, 2);
}

// Those of a browser that goes, and the one that is told to have ended.
void HelpOnlineTest::downloadsEnd()
{
    auto* browser = new Browser;
    browser->showImages({ "after.gone.a.png", "after.gone.b.png" });
    QCoreApplication::processEvents();
    delete browser;
    Browser next;
    next.showImages({ "after.gone.c.png" });
    next.slotDownloadFinished(KnowledgeBase::url("/images/after.gone.c.png").toString(), -1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    KnowledgeBase::take("gone");

    next.showImages({ "red.png" });
    QTRY_COMPARE(next.reloads, 2);
    QCOMPARE(imageFiles(), QStringList("red.png"));
}

// Neither what has come for the page before nor what comes for it late is shown by the page on disk.
void HelpOnlineTest::imagesOfAnotherPage()
{
    Browser browser;
    browser.showImages({ "red.png", "after.late.png" });
    QTRY_COMPARE(browser.redArea().size(), QSize(60, 40));
    QImage own(20, 10, QImage::Format_RGB32);
    own.fill(Qt::blue);
    QVERIFY(own.save(folder->filePath("red.png")) && own.save(folder->filePath("after.late.png")));
    browser.setSearchPaths(browser.searchPaths() << folder->path());
    browser.setText("<html><img src='red.png'><img src='after.late.png'></html>");
    KnowledgeBase::take("late");
    QTRY_COMPARE(browser.reloads, 2);
    QCoreApplication::processEvents();
    QCOMPARE(areaOf(Qt::blue, browser.viewport()).size(), QSize(40, 10));
    QCOMPARE(browser.redArea(), QRect());
}

QTEST_MAIN(HelpOnlineTest)

#include "help-online-test.moc"
