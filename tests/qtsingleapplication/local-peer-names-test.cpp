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
};

void LocalPeerNamesTest::names()
{
    const auto socketName = [](const QString& identity, std::optional<quint32> session = std::nullopt) {
        return LocalPeerNames::of(identity, session).socketName;
    };
    QCOMPARE(socketName("abc"), "qtsingleapp-abc-9e25");
    QCOMPARE(socketName("abc", 0xFFFFFFFE), "qtsingleapp-abc-9e25-fffffffe");
    QCOMPARE(socketName("12345", 0), "qtsingleapp--bb40-0");
    QCOMPARE(socketName("Größe 漢😀"), "qtsingleapp-Gre-9db2");
    QCOMPARE(socketName("kitchenette"), "qtsingleapp-kitche-cc29");
    const LocalPeerNames names = LocalPeerNames::of("ABC", 1);
    QCOMPARE(names.id, "ABC");
    QCOMPARE(names.lockFile, QDir::tempPath() + "/qtsingleapp-ABC-9f2f-1-lockfile");

    const QString path = QCoreApplication::applicationFilePath().toLower();
    QCOMPARE(LocalPeerNames::of({}, std::nullopt).id, path);
    QCOMPARE(socketName({}), "qtsingleapp-testlo-" + socketName(path).section('-', 2));
}

QTEST_GUILESS_MAIN(LocalPeerNamesTest)

#include "local-peer-names-test.moc"
