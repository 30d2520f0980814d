#include "qtsingleapplication/kit-scene.h"
#include "support/guarded-test.h"

#include <vantkit-qt/qtsingleapplication/src/qtsingleapplication.h>

#include <QWidget>
#include <QtTest>

namespace {

int argumentCount = 1;
char programName[] = "program";
char* arguments[] = { programName, nullptr };
const Qt::WindowStates iconic = Qt::WindowMinimized | Qt::WindowMaximized;

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

/** The application object, which is in this process; P, Q and R are others of the same application. */
class SingleApplicationTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void roles();
    void activation_data();
    void activation();
    void nestedLoop();

public Q_SLOTS:

    /** The window is not activated yet. */
    void note(const QString& text)
    {
        received += text;
        QCOMPARE(window->windowState(), iconic);
    }

    void runLoop(const QString& text);

private:
    QStringList received;
    QWidget* window = nullptr;
    KitScene* scene = nullptr;
};

void SingleApplicationTest::roles()
{
    KitScene others;
    {
        QtSingleApplication application(sceneIdentity, argumentCount, arguments);
        QCOMPARE(application.id(), sceneIdentity);
        QCOMPARE(others.play("P isClient: false"), QString());
        QVERIFY(application.isRunning());
        QVERIFY(application.sendMessage("hello"));
        QCOMPARE(others.play("P next: hello; P end"), QString());
        QVERIFY(!application.isRunning());
        QVERIFY(!application.sendMessage("no"));
        QVERIFY(application.unlock());
    }
    const QtSingleApplication application(argumentCount, arguments, false);
    QCOMPARE(application.id(), QCoreApplication::applicationFilePath().toLower());
}

void SingleApplicationTest::activation_data()
{
    QTest::addColumn<int>("activations");
    QTest::newRow("window on, window off") << 0;
    QTest::newRow("window on, window on") << 2;
    QTest::newRow("window on, none on") << 0;
    QTest::newRow("deleted on") << 0;
}

void SingleApplicationTest::activation()
{
    QFETCH(int, activations);
    received.clear();
    KitScene others;
    QtSingleApplication application(sceneIdentity, argumentCount, arguments);
    connect(&application, SIGNAL(messageReceived(const QString&)), this, SLOT(note(const QString&)));
    CountingWindow minimised;
    minimised.setWindowState(iconic);
    minimised.show();
    QWidget front;
    front.show();
    QTRY_COMPARE(QApplication::activeWindow(), &front);
    for (const QByteArray& call : QByteArray(QTest::currentDataTag()).split(',')) {
        QWidget deleted;
        QWidget* widget = call.contains("window") ? &minimised : nullptr;
        application.setActivationWindow(call.contains("deleted") ? &deleted : widget, call.endsWith("on"));
    }
    QWidget* const target = application.activationWindow();
    window = &minimised;
    minimised.raised = 0;

    QVERIFY(!application.isRunning());
    others.tell("Q", "send hello");
    QTRY_COMPARE(received, QStringList("hello"));
    QCOMPARE(others.answer("Q"), "true");
    QCOMPARE(minimised.raised, activations);
    application.activateWindow();
    QCOMPARE(minimised.raised, target ? activations + 1 : 0);
    QCOMPARE(minimised.windowState() & ~Qt::WindowActive, target ? Qt::WindowMaximized : iconic);
    QTRY_COMPARE(QApplication::activeWindow(), target ? &minimised : &front);
}

/** A slot that runs an event loop keeps no sender waiting, and messages come meanwhile. */
void SingleApplicationTest::nestedLoop()
{
    received.clear();
    KitScene others;
    QtSingleApplication application(sceneIdentity, argumentCount, arguments);
    scene = &others;
    connect(&application, SIGNAL(messageReceived(const QString&)), this, SLOT(runLoop(const QString&)));
    QVERIFY(!application.isRunning());
    others.tell("P", "send first");
    QTRY_COMPARE(received, QStringList({ "first", "second", "second", "answered" }));
}

void SingleApplicationTest::runLoop(const QString& text)
{
    received += text;
    if (text == "first") {
        scene->tell("Q", "send second");
        scene->tell("R", "send second");
        QTRY_COMPARE(received.size(), 3);
        QCOMPARE(scene->answer("P") + scene->answer("Q") + scene->answer("R"), "truetruetrue");
        received += "answered";
    }
}

QTEST_APPLESS_MAIN(SingleApplicationTest)

#include "single-application-test.moc"
