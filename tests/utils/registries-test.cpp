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
};

void RegistriesTest::paths()
{
    UIPathManager& paths = UIPathManager::getInstance();
    log.expect("Cannot find path by key \"abc\"", 2);
    QCOMPARE(paths.getPath("abc") + paths.getPath("abc"), QString());
    paths.setPath("abc", "/first");
    paths.setPath("ABC", "/other");
    log.expect("Existing path is \"/first\" with key \"abc\" but overwrite it now", 2);
    paths.setPath("abc", "/first");
    paths.setPath("abc", "/second");
    QCOMPARE(paths.getPath("abc"), QString("/second"));

    debug_message.setEnabled(QtWarningMsg, false);
    paths.setPath("abc", "/third");
    QCOMPARE(paths.getPath("abc"), QString("/third"));
    QCOMPARE(paths.getPath("silenced"), QString());
    debug_message.setEnabled(QtWarningMsg, true);
}

void RegistriesTest::strings()
{
    ComponentStrings& strings = ComponentStrings::getInstance();
    strings.installStrings({ { "ok", "Gut" }, { "cancel", "Abbrechen" } });
    strings.installStrings({ { "ok", "OK" }, { "nil", {} } }); // in place of the former
    QCOMPARE(strings.getString("ok"), QString("OK"));
    QCOMPARE(strings.getString("nil"), QString());
    for (const char* const key : { "cancel", "OK" }) {
        log.expect(QString("Cannot find key in ComponentStrings \"%1\"").arg(key));
        QCOMPARE(strings.getString(key), QString(key));
    }
}

QTEST_GUILESS_MAIN(RegistriesTest)

#include "registries-test.moc"
