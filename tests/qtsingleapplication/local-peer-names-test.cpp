#include "qtsingleapplication/src/local-peer-names_p.h"
#include "support/guarded-test.h"

#include <QtTest>

using vantkit::internal::LocalPeerNames;

namespace {

constexpr qint64 none = -1;

std::optional<quint32> session(qint64 number)
{
    return number == none ? std::nullopt : std::make_optional(static_cast<quint32>(number));
}

} // namespace

/** The names that processes have to agree on, of whatever release of the kit. */
class LocalPeerNamesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
    void defaultIdentity();
};

void LocalPeerNamesTest::names_data()
{
    QTest::addColumn<QString>("identity");
    QTest::addColumn<qint64>("session");
    QTest::addColumn<QString>("socketName");
    const auto row = [](const char* identity, qint64 session, const char* socketName) {
        QTest::addRow("%s, %lld", identity, session)
            << QString::fromUtf8(identity) << session << QString::fromLatin1(socketName);
    };
    row("abc", 1, "qtsingleapp-abc-9e25-1");
    row("abc", none, "qtsingleapp-abc-9e25");
    row("abc", 0, "qtsingleapp-abc-9e25-0");
    row("abc", 0xFFFFFFFE, "qtsingleapp-abc-9e25-fffffffe");
    row("ABC", 1, "qtsingleapp-ABC-9f2f-1");
    row("12345", 1, "qtsingleapp--bb40-1");
    row("id35", 1, "qtsingleapp-id-91-1");
    row("Größe 漢😀", 1, "qtsingleapp-Gre-9db2-1");
    row("kitchen", 1, "qtsingleapp-kitche-2a65-1");
    row("kitchenette", 1, "qtsingleapp-kitche-cc29-1");
}

void LocalPeerNamesTest::names()
{
    QFETCH(QString, identity);
    QFETCH(qint64, session);
    const LocalPeerNames names = LocalPeerNames::of(identity, ::session(session));
    QCOMPARE(names.id, identity);
    QTEST(names.socketName, "socketName");
    QCOMPARE(names.lockFile,
        QDir(QDir::tempPath()).absolutePath() + QLatin1Char('/') + names.socketName
            + QStringLiteral("-lockfile"));
}

void LocalPeerNamesTest::defaultIdentity()
{
    const LocalPeerNames names = LocalPeerNames::of(QString(), std::nullopt);
    const LocalPeerNames explicitly =
        LocalPeerNames::of(QCoreApplication::applicationFilePath().toLower(), std::nullopt);
    QCOMPARE(names.id, explicitly.id);
    QCOMPARE(names.socketName.section(QLatin1Char('-'), 0, 1), QStringLiteral("qtsingleapp-testlo"));
    QCOMPARE(
        names.socketName.section(QLatin1Char('-'), 2), explicitly.socketName.section(QLatin1Char('-'), 2));
}

QTEST_GUILESS_MAIN(LocalPeerNamesTest)

#include "local-peer-names-test.moc"
