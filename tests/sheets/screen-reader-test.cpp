#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QProcess>
#include <QtTest>

#include <functional>

/** The gallery as a screen reader comes to know it, over the accessibility bus. */
class ScreenReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void sheet();

private:
    /** An object on the bus. */
    struct Node
    {
        QString service;
        QString path;
    };

    QVariantList call(const Node& node, const QString& interface, const QString& method,
        const QVariantList& arguments = {}) const;
    QString name(const Node& node) const;
    QString role(const Node& node) const;
    QList<Node> children(const Node& node) const;

    /** All nodes of a role below a node, whose name is @p wanted if there is one. */
    QList<Node> find(const Node& below, const QString& wantedRole, const QString& wantedName = {}) const;
    QList<Node> inGallery(const QString& wantedRole, const QString& wantedName = {}) const;
    bool press(const QList<Node>& buttons) const;

    QDBusConnection bus { QString() };
    QProcess gallery;
};

namespace {

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString pushButton = QStringLiteral("push button");
const QString dialog = QStringLiteral("dialog");

} // namespace

void ScreenReaderTest::initTestCase()
{
    QDBusConnection session = QDBusConnection::sessionBus();
    const auto ask = [&session](
                         const QString& interface, const QString& method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"), interface, method);
        message.setArguments(arguments);
        return session.call(message);
    };
    const QDBusMessage enabled = ask(properties, QStringLiteral("Set"),
        { QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"),
            QVariant::fromValue(QDBusVariant(true)) });
    QVERIFY2(enabled.type() == QDBusMessage::ReplyMessage, qPrintable(enabled.errorMessage()));
    const QDBusMessage address = ask(QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"), {});
    QVERIFY2(address.type() == QDBusMessage::ReplyMessage, qPrintable(address.errorMessage()));
    bus = QDBusConnection::connectToBus(
        address.arguments().first().toString(), QStringLiteral("accessibility"));
    QVERIFY(bus.isConnected());

    gallery.setProcessChannelMode(QProcess::ForwardedChannels);
    gallery.start(QStringLiteral(GALLERY_PROGRAM),
        { QStringLiteral("--page"), QStringLiteral("sheets"), QStringLiteral("--lang"),
            QStringLiteral("enu") });
    QVERIFY(gallery.waitForStarted());
}

void ScreenReaderTest::cleanupTestCase()
{
    gallery.kill();
    gallery.waitForFinished();
}

QVariantList ScreenReaderTest::call(
    const Node& node, const QString& interface, const QString& method, const QVariantList& arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(node.service, node.path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = bus.call(message);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

QString ScreenReaderTest::name(const Node& node) const
{
    const QVariantList reply =
        call(node, properties, QStringLiteral("Get"), { accessible, QStringLiteral("Name") });
    return reply.isEmpty() ? QString() : reply.first().value<QDBusVariant>().variant().toString();
}

QString ScreenReaderTest::role(const Node& node) const
{
    return call(node, accessible, QStringLiteral("GetRoleName")).value(0).toString();
}

QList<ScreenReaderTest::Node> ScreenReaderTest::children(const Node& node) const
{
    QList<Node> found;
    const QVariantList reply = call(node, accessible, QStringLiteral("GetChildren"));
    if (reply.isEmpty()) {
        return found;
    }
    const auto list = reply.first().value<QDBusArgument>();
    for (list.beginArray(); !list.atEnd();) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        found += { service, path.path() };
    }
    return found;
}

QList<ScreenReaderTest::Node> ScreenReaderTest::find(
    const Node& below, const QString& wantedRole, const QString& wantedName) const
{
    QList<Node> found;
    for (const Node& child : children(below)) {
        if (role(child) == wantedRole && (wantedName.isEmpty() || name(child) == wantedName)) {
            found += child;
        }
        found += find(child, wantedRole, wantedName);
    }
    return found;
}

QList<ScreenReaderTest::Node> ScreenReaderTest::inGallery(
    const QString& wantedRole, const QString& wantedName) const
{
    return find(
        { QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root") },
        wantedRole, wantedName);
}

bool ScreenReaderTest::press(const QList<Node>& buttons) const
{
    return buttons.size() == 1
        && call(buttons.first(), QStringLiteral("org.a11y.atspi.Action"), QStringLiteral("DoAction"), { 0 })
               .value(0)
               .toBool();
}

void ScreenReaderTest::sheet()
{
    const QString open = QStringLiteral("Question with words of its own on the buttons, In this window");
    QTRY_COMPARE_WITH_TIMEOUT(inGallery(pushButton, open).size(), 1, 20000);
    const QList<Node> applications = inGallery(QStringLiteral("application"));
    QCOMPARE(applications.size(), 1);
    const QList<Node> windows = children(applications.first());
    QCOMPARE(windows.size(), 1);
    QCOMPARE(name(windows.first()), QStringLiteral("Sheets – vantkit-qt Gallery"));
    QCOMPARE(inGallery(dialog).size(), 0);

    QVERIFY(press(inGallery(pushButton, open)));
    QTRY_COMPARE_WITH_TIMEOUT(inGallery(dialog, QStringLiteral("Delete this backup?")).size(), 1, 20000);
    const Node shown = inGallery(dialog).first();
    QStringList buttons;
    for (const Node& button : find(shown, pushButton)) {
        buttons += name(button);
    }
    QCOMPARE(buttons, (QStringList { QStringLiteral("Delete"), QStringLiteral("Keep") }));
    QVERIFY(press(find(shown, pushButton, QStringLiteral("Keep"))));
    QTRY_COMPARE_WITH_TIMEOUT(inGallery(dialog).size(), 0, 20000);
}

QTEST_GUILESS_MAIN(ScreenReaderTest)

#include "screen-reader-test.moc"
