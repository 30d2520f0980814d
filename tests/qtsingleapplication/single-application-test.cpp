#include "qtsingleapplication/scene.h"
#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QtTest>

namespace {

int argumentCount = 1;
char programName[] = "program";
char* arguments[] = { programName, nullptr };

/** A window that counts how often it is brought to the front. */
class CountingWindow : public QWidget
{
public:
    int raised = 0;

protected:
    bool event(QEvent* event) override
    {
        raised += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return QWidget::event(event);
    }
};

} // namespace

/** The application object, which is in this process; P, Q, R and S are others of the same application. */
class SingleApplicationTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void roles();
    void defaultIdentity();
    void activation_data();
    void activation();
    void deletedWindow();
    void modalSheet();

public Q_SLOTS:
    void note(const QString& text);
    void openSheet(const QString& text);

private:
    QStringList received;
    QWidget* window = nullptr;
    QList<Qt::WindowStates> states; // of the window, when messages came
    Scene* scene = nullptr;
};

void SingleApplicationTest::init()
{
    GuardedTest::init();
    received.clear();
    states.clear();
}

void SingleApplicationTest::note(const QString& text)
{
    received += text;
    states += window ? window->windowState() : Qt::WindowNoState;
}

void SingleApplicationTest::roles()
{
    Scene others;
    {
        QtSingleApplication application(QLatin1String(sceneIdentity), argumentCount, arguments);
        QCOMPARE(application.id(), QLatin1String(sceneIdentity));
        QCOMPARE(others.play(QStringLiteral("Q isClient: false; Q end; P isClient: false")), QString());
        QVERIFY(application.isRunning());
        QVERIFY(application.sendMessage(QStringLiteral("hello")));
        QCOMPARE(others.play(QStringLiteral("P take: hello; P end")), QString());
        QVERIFY(!application.isRunning());
        QVERIFY(!application.sendMessage(QStringLiteral("no")));
        QCOMPARE(others.play(QStringLiteral("Q isClient")), QString());
        QVERIFY(application.unlock());
        QCOMPARE(
            others.play(QStringLiteral("Q isClient: false [QtSingleCoreApplication: listen on local socket "
                                       "failed, QLocalServer::listen: Address in use]; Q end")),
            QString());
    }
    {
        QtSingleApplication application(QLatin1String(sceneIdentity), argumentCount, arguments);
        QVERIFY(!application.isRunning());
        QCOMPARE(others.play(QStringLiteral("Q isClient")), QString());
    }
    QCOMPARE(others.play(QStringLiteral("Q isClient: false")), QString());
    QCOMPARE(others.finish(), QString());
}

void SingleApplicationTest::defaultIdentity()
{
    const Scene others;
    for (const bool gui : { true, false }) {
        const QtSingleApplication application(argumentCount, arguments, gui);
        QCOMPARE(application.id(), QCoreApplication::applicationFilePath().toLower());
    }
}

void SingleApplicationTest::activation_data()
{
    QTest::addColumn<QByteArray>("calls");
    QTest::addColumn<int>("activations");
    QTest::newRow("on message") << QByteArray("window on") << 1;
    QTest::newRow("by hand only") << QByteArray("window off") << 0;
    QTest::newRow("no longer") << QByteArray("window on, window off") << 0;
    QTest::newRow("twice") << QByteArray("window on, window on") << 2;
    QTest::newRow("no longer twice") << QByteArray("window on, window on, window off") << 0;
    QTest::newRow("no window") << QByteArray("none on") << 0;
    QTest::newRow("no window any more") << QByteArray("window on, none on") << 0;
    QTest::newRow("a window later") << QByteArray("none on, window off, window on") << 1;
}

void SingleApplicationTest::activation()
{
    QFETCH(QByteArray, calls);
    QFETCH(int, activations);
    Scene others;
    QtSingleApplication application(QLatin1String(sceneIdentity), argumentCount, arguments);
    connect(&application, SIGNAL(messageReceived(const QString&)), this, SLOT(note(const QString&)));
    CountingWindow minimised;
    minimised.setWindowState(Qt::WindowMinimized | Qt::WindowMaximized);
    minimised.show();
    QWidget front;
    front.show();
    QTRY_COMPARE(QApplication::activeWindow(), &front);
    for (const QByteArray& call : calls.split(',')) {
        QWidget* widget = call.contains("window") ? &minimised : nullptr;
        application.setActivationWindow(widget, call.endsWith("on"));
        QCOMPARE(application.activationWindow(), widget);
    }
    window = &minimised;
    minimised.raised = 0;

    QVERIFY(!application.isRunning());
    others.tell(QStringLiteral("Q"), QStringLiteral("send hello"));
    QTRY_COMPARE(received, QStringList(QStringLiteral("hello")));
    QCOMPARE(others.answer(QStringLiteral("Q")), QStringLiteral("true"));
    QCOMPARE(states.first(), Qt::WindowMinimized | Qt::WindowMaximized);
    QCOMPARE(minimised.raised, activations);
    if (activations == 0 && application.activationWindow()) {
        application.activateWindow();
        QCOMPARE(minimised.raised, 1);
    }
    const bool activated = minimised.raised > 0;
    QCOMPARE(minimised.windowState() & ~Qt::WindowActive,
        activated ? Qt::WindowMaximized : Qt::WindowMinimized | Qt::WindowMaximized);
    QTRY_COMPARE(QApplication::activeWindow(), activated ? &minimised : &front);
    window = nullptr;
    QCOMPARE(others.finish(), QString());
}

void SingleApplicationTest::deletedWindow()
{
    Scene others;
    QtSingleApplication application(QLatin1String(sceneIdentity), argumentCount, arguments);
    connect(&application, SIGNAL(messageReceived(const QString&)), this, SLOT(note(const QString&)));
    application.setActivationWindow(std::make_unique<QWidget>().get());
    QVERIFY(!application.activationWindow());
    QVERIFY(!application.isRunning());
    others.tell(QStringLiteral("Q"), QStringLiteral("send hello"));
    QTRY_COMPARE(received.size(), 1);
    QCOMPARE(others.answer(QStringLiteral("Q")), QStringLiteral("true"));
    QCOMPARE(others.finish(), QString());
}

/** A slot that opens a sheet keeps no sender waiting, and messages that come meanwhile arrive before it
 * closes. */
void SingleApplicationTest::modalSheet()
{
    const QTemporaryDir userFolder;
    Scene others;
    QtSingleApplication application(QLatin1String(sceneIdentity), argumentCount, arguments);
    sheets::startKit(userFolder.path());
    CoveredWindow covered;
    QVERIFY(covered.open());
    window = &covered;
    scene = &others;
    connect(&application, SIGNAL(messageReceived(const QString&)), this, SLOT(openSheet(const QString&)));
    QVERIFY(!application.isRunning());

    others.tell(QStringLiteral("P"), QStringLiteral("send first"));
    QTRY_COMPARE(received.size(), 5);
    QCOMPARE(received.takeFirst(), QStringLiteral("first"));
    QCOMPARE(received.takeLast(), QStringLiteral("answered"));
    received.sort();
    QCOMPARE(received,
        QStringList({ QStringLiteral("second"), QStringLiteral("second"), QStringLiteral("second") }));
    QCOMPARE(others.finish(), QString());
    scene = nullptr;
    window = nullptr;
}

void SingleApplicationTest::openSheet(const QString& text)
{
    received += text;
    if (text != QLatin1String("first")) {
        return;
    }
    const QStringList senders { QStringLiteral("Q"), QStringLiteral("R"), QStringLiteral("S") };
    for (const QString& sender : senders) {
        scene->tell(sender, QStringLiteral("send second"));
    }
    const QPointer<VantSheet> sheet = sheets::make(false, window);
    sheets::soon(this, [&] {
        QCOMPARE(scene->answer(QStringLiteral("P")), QStringLiteral("true"));
        QTRY_COMPARE(received.size(), 4);
        for (const QString& sender : senders) {
            QCOMPARE(scene->answer(sender), QStringLiteral("true"));
        }
        sheets::done(sheet, QMessageBox::Ok);
    });
    sheets::exec(sheet);
    received += QStringLiteral("answered");
}

QTEST_APPLESS_MAIN(SingleApplicationTest)

#include "single-application-test.moc"
