#pragma once

#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QtTest>
#include <QtWidgets>

/**
 * The base of the tests of widgets: the kit on the theme that is shipped, with a user folder that is hard to
 * write in a style sheet. Strings are their keys; that of a month, "jan month", begins unlike Qt's "Jan".
 */
class ThemedTest : public GuardedTest
{
    Q_OBJECT

protected:
    QTemporaryDir ownFolder;

protected Q_SLOTS:

    void initTestCase()
    {
        const VantTheme theme = VantTheme::of("default");
        ThemeFolder::setPaths(QDir::toNativeSeparators(theme.folder()),
            QDir::toNativeSeparators(ownFolder.filePath("Zoë & Max's (50% $)")));
        QVERIFY(theme.load("enu"));
        QMap<QString, QString> strings;
        for (const QString& key : theme.strings("enu").keys()) {
            strings.insert(key, QString(key).replace(QRegularExpression("month_(.*)"), "\\1 month"));
        }
        ComponentStrings::getInstance().installStrings(strings);
        QApplication::setQuitOnLastWindowClosed(false);
    }
};
