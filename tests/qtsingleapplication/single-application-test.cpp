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

} // namespace

/** The application object, which is in this process; P and Q are others of the same application. */
class SingleApplicationTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void roles();
    void activation_data();
    void activation();

public Q_SLOTS:

    /** The sender has been let go already, and the window is not activated yet. */
    void note(const QString& text)
    {
        received += text;
        QCOMPARE(scene->answer("Q"), "true");
        QCOMPARE(window->windowState(), iconic);
    }

    /** Counts how often a window is brought to the front. */
    bool eventFilter(QObject* /*window*/, QEvent* event) override
    {
        raised += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return false;
    }

private:
    int raised = 0;
    QStringList received;
    QWidget* window = nullptr;
    KitScene* scene = nullptr;
};

void SingleApplicationTest::roles()
{
    KitScene others;
    {
        QtSingleApplication application(sceneIdentity(), argumentCount, arguments);
        QCOMPARE(application.id(), sceneIdentity());
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
    QtSingleApplication application(sceneIdentity(), argumentCount, arguments);
    connect(&application, SIGNAL(messageReceived(const QString&)), this, SLOT(note(const QString&)));
    QWidget minimised;
    minimised.setWindowState(iconic);
    minimised.installEventFilter(this);
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
    scene = &others;
    window = &minimised;
    raised = 0;

    QVERIFY(!application.isRunning());
    others.tell("Q", "send hello");
    QTRY_COMPARE(received, QStringList("hello"));
    QCOMPARE(raised, activations);
    application.activateWindow();
    QCOMPARE(raised, target ? activations + 1 : 0);
    QCOMPARE(minimised.windowState() & ~Qt::WindowActive, target ? Qt::WindowMaximized : iconic);
    QTRY_COMPARE(QApplication::activeWindow(), target ? &minimised : &front);
}

QTEST_APPLESS_MAIN(SingleApplicationTest)

#include "single-application-test.moc"
