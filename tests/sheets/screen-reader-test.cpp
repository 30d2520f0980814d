#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QProcess>
#include <QtTest>

/** The gallery as a screen reader comes to know it, over the accessibility bus. */
class ScreenReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void sheet();

private:
    QProcess gallery;
};

namespace {

/** An object on a bus. */
struct Node
{
    QString service;
    QString path;
};

/** The first thing that a method answers with; invalid if it fails. */
QVariant call(const Node& node, const QString& interface, const QString& method,
    const QVariantList& arguments = {}, const QDBusConnection& bus = QDBusConnection("accessibility"))
{
    QDBusMessage message = QDBusMessage::createMethodCall(node.service, node.path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = bus.call(message);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0, true) : QVariant();
}

QString name(const Node& node)
{
    const QVariant value =
        call(node, "org.freedesktop.DBus.Properties", "Get", { "org.a11y.atspi.Accessible", "Name" });
    return value.value<QDBusVariant>().variant().toString();
}

/** All nodes of a role below a node, whose name is @p wantedName if there is one. */
QList<Node> find(const QString& role, const QString& wantedName = {},
    const Node& below = { "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root" })
{
    QList<Node> found;
    const auto children = call(below, "org.a11y.atspi.Accessible", "GetChildren").value<QDBusArgument>();
    if (children.currentType() != QDBusArgument::ArrayType) {
        return found;
    }
    for (children.beginArray(); !children.atEnd();) {
        QString service;
        QDBusObjectPath path;
        children.beginStructure();
        children >> service >> path;
        children.endStructure();
        const Node child { service, path.path() };
        if (call(child, "org.a11y.atspi.Accessible", "GetRoleName") == role
            && (wantedName.isEmpty() || name(child) == wantedName)) {
            found += child;
        }
        found += find(role, wantedName, child);
    }
    return found;
}

bool press(const QList<Node>& buttons)
{
    return buttons.size() == 1 && call(buttons[0], "org.a11y.atspi.Action", "DoAction", { 0 }).toBool();
}

} // namespace

void ScreenReaderTest::initTestCase()
{
    const QDBusConnection session = QDBusConnection::sessionBus();
    const Node broker { "org.a11y.Bus", "/org/a11y/bus" };
    const QVariant yes = QVariant::fromValue(QDBusVariant(true));
    QVERIFY(call(
        broker, "org.freedesktop.DBus.Properties", "Set", { "org.a11y.Status", "IsEnabled", yes }, session)
                .isValid());
    const QString address = call(broker, "org.a11y.Bus", "GetAddress", {}, session).toString();
    QVERIFY(QDBusConnection::connectToBus(address, "accessibility").isConnected());

    gallery.setProcessChannelMode(QProcess::ForwardedChannels);
    gallery.start(GALLERY_PROGRAM, { "--page", "sheets", "--lang", "enu" });
    QVERIFY(gallery.waitForStarted());
}

void ScreenReaderTest::cleanupTestCase()
{
    gallery.kill();
    gallery.waitForFinished();
}

void ScreenReaderTest::sheet()
{
    const QString open = "Question with words of its own on the buttons, In this window";
    QTRY_COMPARE_WITH_TIMEOUT(find("push button", open).size(), 1, 20000);
    QCOMPARE(find("filler", "Sheets – vantkit-qt Gallery").size(), 1);
    QCOMPARE(find("dialog").size(), 0);

    QVERIFY(press(find("push button", open)));
    QTRY_COMPARE_WITH_TIMEOUT(find("dialog", "Delete this backup?").size(), 1, 20000);
    const Node shown = find("dialog").first();
    const QList<Node> buttons = find("push button", {}, shown);
    QCOMPARE(buttons.size(), 2);
    QCOMPARE(name(buttons[0]) + '|' + name(buttons[1]), QString("Delete|Keep"));
    QVERIFY(press({ buttons[1] }));
    QTRY_COMPARE_WITH_TIMEOUT(find("dialog").size(), 0, 20000);
}

QTEST_GUILESS_MAIN(ScreenReaderTest)

#include "screen-reader-test.moc"
