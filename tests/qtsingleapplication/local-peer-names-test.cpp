#include "qtsingleapplication/src/local-peer-names_p.h"
#include "support/guarded-test.h"

#include <QtTest>

using vantkit::internal::LocalPeerNames;

/** The names that processes have to agree on, of whatever release of the kit. */
class LocalPeerNamesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void names();
    void defaultIdentity();
};

void LocalPeerNamesTest::names()
{
    const auto socketName = [](const char* identity, std::optional<quint32> session) {
        return LocalPeerNames::of(identity, session).socketName;
    };
    QCOMPARE(socketName("abc", 0), "qtsingleapp-abc-9e25-0");
    QCOMPARE(socketName("abc", std::nullopt), "qtsingleapp-abc-9e25");
    QCOMPARE(socketName("abc", 0xFFFFFFFE), "qtsingleapp-abc-9e25-fffffffe");
    QCOMPARE(socketName("12345", 1), "qtsingleapp--bb40-1");
    QCOMPARE(socketName("id35", 1), "qtsingleapp-id-91-1");
    QCOMPARE(socketName("Größe 漢😀", 1), "qtsingleapp-Gre-9db2-1");
    QCOMPARE(socketName("kitchenette", 1), "qtsingleapp-kitche-cc29-1");
    const LocalPeerNames names = LocalPeerNames::of("ABC", 1);
    QCOMPARE(names.id, "ABC");
    QCOMPARE(names.lockFile, QDir::tempPath() + "/qtsingleapp-ABC-9f2f-1-lockfile");
}

void LocalPeerNamesTest::defaultIdentity()
{
    const LocalPeerNames names = LocalPeerNames::of(QString(), std::nullopt);
    const LocalPeerNames explicitly =
        LocalPeerNames::of(QCoreApplication::applicationFilePath().toLower(), std::nullopt);
    QCOMPARE(names.id, explicitly.id);
    QCOMPARE(names.socketName, "qtsingleapp-testlo-" + explicitly.socketName.section('-', 2));
}

QTEST_GUILESS_MAIN(LocalPeerNamesTest)

#include "local-peer-names-test.moc"
