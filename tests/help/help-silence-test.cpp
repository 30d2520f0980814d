#include "knowledge-base.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/help/browser-window.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// A program of its own, since it takes as long as a page may take.
class HelpSilenceTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void timeLimit();
};

namespace {

struct Window : BrowserWindow
{
    explicit Window(const QString& path) { reload(KnowledgeBase::url(path)); }

    void fallbackOffline() override { ++fallbacks; }

    int fallbacks = 0;
    QSignalSpy aborts { this, &BrowserWindow::sigAbortRequest };
};

} // namespace

// Beside a window that waits in vain, one whose second request is answered: with that the limit of both has
// ended.
void HelpSilenceTest::timeLimit()
{
    const QTemporaryDir userFolder;
    defaulttheme::load(userFolder.path());
    const KnowledgeBase server;
    server.useCertificate("good");
    QElapsedTimer time;
    time.start();
    Window answered("/silence");
    answered.reload(KnowledgeBase::url("/some/path"));
    Window waiting("/silence");

    QTRY_COMPARE_WITH_TIMEOUT(waiting.fallbacks, 1, 20000);
    QVERIFY2(time.elapsed() >= 9500, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(waiting.aborts.size(), 1);
    QCOMPARE(answered.aborts.size(), 0);

    // Had the limit been left running, or had it struck twice, it would show with a request that needs no
    // time.
    waiting.reload(QUrl());
    QTRY_COMPARE(waiting.fallbacks, 2);
    QCOMPARE(waiting.aborts.size(), 1);
    QCOMPARE(answered.fallbacks, 0);
}

QTEST_MAIN(HelpSilenceTest)

#include "help-silence-test.moc"
