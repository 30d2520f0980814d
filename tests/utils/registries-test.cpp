#include "support/guarded-test.h"

#include <vantkit-qt/utils/component-strings.h>
#include <vantkit-qt/utils/debug-message.h>
#include <vantkit-qt/utils/ui-path-manager.h>

#include <QtTest>

class RegistriesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void paths();
    void strings();
    void silenced();
};

void RegistriesTest::paths()
{
    UIPathManager& paths = UIPathManager::getInstance();
    log.expect(QStringLiteral("Cannot find path by key \"abc\""), 2);
    QCOMPARE(paths.getPath(QStringLiteral("abc")), QString());
    QCOMPARE(paths.getPath(QStringLiteral("abc")), QString());

    paths.setPath(QStringLiteral("abc"), QStringLiteral("/first"));
    paths.setPath(QStringLiteral("ABC"), QStringLiteral("/other"));
    QCOMPARE(paths.getPath(QStringLiteral("abc")), QStringLiteral("/first"));
    QCOMPARE(paths.getPath(QStringLiteral("ABC")), QStringLiteral("/other"));

    log.expect(QStringLiteral("Existing path is \"/first\" with key \"abc\" but overwrite it now"), 2);
    paths.setPath(QStringLiteral("abc"), QStringLiteral("/first"));
    paths.setPath(QStringLiteral("abc"), QStringLiteral("/second"));
    QCOMPARE(paths.getPath(QStringLiteral("abc")), QStringLiteral("/second"));
}

void RegistriesTest::strings()
{
    ComponentStrings& strings = ComponentStrings::getInstance();
    strings.installStrings({ { QStringLiteral("ok"), QStringLiteral("Gut") },
        { QStringLiteral("cancel"), QStringLiteral("Abbrechen") } });
    strings.installStrings({ { QStringLiteral("ok"), QStringLiteral("OK") }, { QStringLiteral("nil"), {} } });
    QCOMPARE(strings.getString(QStringLiteral("ok")), QStringLiteral("OK"));
    QCOMPARE(strings.getString(QStringLiteral("nil")), QString());

    log.expect(QStringLiteral("Cannot find key in ComponentStrings \"cancel\""));
    log.expect(QStringLiteral("Cannot find key in ComponentStrings \"OK\""));
    QCOMPARE(strings.getString(QStringLiteral("cancel")), QStringLiteral("cancel"));
    QCOMPARE(strings.getString(QStringLiteral("OK")), QStringLiteral("OK"));

    strings.installStrings({});
    log.expect(QStringLiteral("Cannot find key in ComponentStrings \"ok\""));
    QCOMPARE(strings.getString(QStringLiteral("ok")), QStringLiteral("ok"));
}

void RegistriesTest::silenced()
{
    debug_message.setEnabled(QtWarningMsg, false);
    const QString key = QStringLiteral("silenced");
    QCOMPARE(UIPathManager::getInstance().getPath(key), QString());
    UIPathManager::getInstance().setPath(key, QStringLiteral("/1"));
    UIPathManager::getInstance().setPath(key, QStringLiteral("/2"));
    QCOMPARE(UIPathManager::getInstance().getPath(key), QStringLiteral("/2"));
    QCOMPARE(ComponentStrings::getInstance().getString(key), key);
    debug_message.setEnabled(QtWarningMsg, true);
}

QTEST_GUILESS_MAIN(RegistriesTest)

#include "registries-test.moc"
