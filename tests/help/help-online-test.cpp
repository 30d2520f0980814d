#include "knowledge-base.h"
#include "support/themed-test.h"
#include "windows.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>
#include <optional>

// The roads to the knowledge base, against a real server.
class HelpOnlineTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void query();
    void answers();
    void requestsAtOnce();
    void windowGoesDuringRequest();
    void imagesOfHelp();
    void downloadsAtOnce();
    void timeLimit();

private:
    void showImage(Browser& browser, const QString& name);

    QStringList imageFiles() const
    {
        return QDir(ownFolder.filePath("corvanta_help/image")).entryList(QDir::Files);
    }

    KnowledgeBase server;
    std::optional<Window<BrowserWindow>> answered;
    std::optional<Window<BrowserWindow>> waiting;
    QElapsedTimer time;
    qint64 limit = 0;
};

// Two windows wait for the time limit beside all other tests. A request of the first is answered, and with
// that the limit of both its requests has ended.
void HelpOnlineTest::initTestCase()
{
    ThemedTest::initTestCase();
    setTemporaryFolder(ownFolder.path());
    server.useCertificate("good");
    time.start();
    for (auto* window : { &answered.emplace(), &waiting.emplace() }) {
        window->reload(KnowledgeBase::url("/after-never"));
        server.awaitRequest();
    }
    answered->reload(KnowledgeBase::url("/answer"));
    connect(&*waiting, &BrowserWindow::sigAbortRequest, this, [this] { limit = time.elapsed(); });
}

void HelpOnlineTest::query()
{
    const QList<QPair<HelpContext, QString>> queries = {
        { { "deu", "", "a.html", "b" },
            "section=b&lang=ger&link=a.html&unique=corvanta_utility_help&version=1.0" },
        { { "e&u=", "", "a b/#ä?.html", "50% \"%20\"", "2.5" },
            "section=50%25%20%22%2520%22&lang=e%26u%3D&link=a%20b/%23%C3%A4?.html"
            "&unique=corvanta_utility_help&version=2.5" },
    };
    for (const auto& [context, query] : queries) {
        Window<HelpWindow> window(context);
        QTRY_COMPARE(window.text(), "/cgi/knowledgebase/?action=findHelpFile&" + query);
    }
}

// After a failure what shows stays.
void HelpOnlineTest::answers()
{
    Window<BrowserWindow> window;
    window.reload(KnowledgeBase::url("/redirect"));
    QTRY_COMPARE(window.text(), QString("elsewhere"));
    window.reload(KnowledgeBase::url("/nul"));
    QTRY_COMPARE(window.text(), QString("before"));
    QCOMPARE(window.fallbacks, 0);
    window.reload(KnowledgeBase::url("/not-found"));
    QTRY_COMPARE(window.fallbacks, 1);
    server.useCertificate("unknown");
    window.reload(KnowledgeBase::url("/path"));
    QTRY_COMPARE(window.fallbacks, 2);
    server.useCertificate("good");
    window.reload(QUrl());
    QTRY_COMPARE(window.fallbacks, 3);
    QCOMPARE(window.text(), QString("before"));
}

// What is answered last shows, whatever was asked last. The end of all requests of a window is of none of
// another.
void HelpOnlineTest::requestsAtOnce()
{
    Window<BrowserWindow> window;
    Window<BrowserWindow> aborting;
    for (const char* path : { "/after-first", "/after-second" }) {
        window.reload(KnowledgeBase::url(path));
        window.init(); // once more, which drops nothing
        aborting.reload(KnowledgeBase::url("/after-never"));
        server.awaitRequest();
        server.awaitRequest();
    }
    emit aborting.sigAbortRequest();
    QTRY_COMPARE(aborting.fallbacks, 2);
    for (const char* turn : { "second", "first" }) {
        server.take(turn);
        QTRY_COMPARE(window.text(), QString("/after-") + turn);
    }
    QCOMPARE(window.fallbacks, 0);
}

void HelpOnlineTest::windowGoesDuringRequest()
{
    // What an application may do in its fall-back: show something that waits for the user, and be closed
    // meanwhile.
    struct Impatient : BrowserWindow
    {
        void fallbackOffline() override
        {
            QEventLoop loop;
            connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
            QTimer::singleShot(0, this, [this] {
                delete this;
                QCoreApplication::processEvents();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            });
            loop.exec();
        }
    };

    const QPointer<BrowserWindow> window = new Impatient;
    window->reload(KnowledgeBase::url("/after-gone"));
    server.awaitRequest();
    window->reload(KnowledgeBase::url("/not-found"));
    QTRY_VERIFY(!window);
    server.take("gone"); // the answer to nobody
}

void HelpOnlineTest::imagesOfHelp()
{
    Window<HelpWindow> window(HelpContext { "", "", "page", "" });
    window.show();
    QVERIFY(window.textBrowser->openExternalLinks());
    QTRY_COMPARE(areaOf(Qt::red, &window).size(), QSize(60, 40));
    QTRY_COMPARE(imageFiles(), QStringList({ "no-image.png", "red.png" }));
}

void HelpOnlineTest::showImage(Browser& browser, const QString& name)
{
    const QString base = KnowledgeBase::url("/images/").toString();
    browser.setText("<html><base href=\"" + base + "\"><img src=\"" + name + "\">");
    server.awaitRequest();
}

// The end of an earlier one leaves a later one of the same image alone. Those of a browser that goes end with
// it, and so does one that is told to have ended.
void HelpOnlineTest::downloadsAtOnce()
{
    Browser browser;
    showImage(browser, "after-twice.png");
    showImage(browser, "after-twice.png");
    for (int ended = 1; ended <= 2; ++ended) {
        server.take("twice");
        QTRY_COMPARE(browser.reloads, ended);
    }
    showImage(*std::make_unique<Browser>(), "after-gone.png");
    showImage(browser, "after-told.png");
    browser.slotDownloadFinished(KnowledgeBase::url("/images/after-told.png").toString(), -1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    server.take("gone");
    server.take("told");
    showImage(browser, "after-last.png");
    server.take("last");
    QTRY_COMPARE(browser.area(Qt::red).size(), QSize(60, 40));
    QCOMPARE(browser.reloads, 4);
    QCOMPARE(imageFiles().filter("after"), QStringList({ "after-last.png", "after-twice.png" }));
}

// Had the limit been left running, it would show with a request that needs no time.
void HelpOnlineTest::timeLimit()
{
    QTRY_COMPARE_WITH_TIMEOUT(waiting->fallbacks, 1, 20000);
    QVERIFY2(limit >= 9500 && limit <= 15000, qPrintable(QString::number(limit)));
    waiting->reload(QUrl());
    QTRY_COMPARE(waiting->fallbacks, 2);
    QCOMPARE(waiting->aborts.size(), 1);
    QCOMPARE(answered->text(), QString("/answer"));
    QCOMPARE(answered->fallbacks + answered->aborts.size(), 0);
}

QTEST_MAIN(HelpOnlineTest)

#include "help-online-test.moc"
