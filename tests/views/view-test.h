#pragma once

#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

using displayscale::px;

/** Of the strings of the tests: in its first three characters too, unlike in any language of Qt. */
inline QString monthName(int month)
{
    return QString("%1th month").arg(month, 2, 10, QChar('0'));
}

/** The base of the tests of views: in the theme that is shipped. Strings but the months are their keys. */
class ViewTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        defaulttheme::load(userFolder.path());
        QMap<QString, QString> strings;
        for (const QString& key : VantTheme::of("default").strings("enu").keys()) {
            strings.insert(key, key);
        }
        for (int month = 1; month <= 12; ++month) {
            const QString name = QLocale::c().monthName(month, QLocale::ShortFormat);
            strings.insert("month_" + name.toLower(), monthName(month));
        }
        ComponentStrings::getInstance().installStrings(strings);
    }

private:
    QTemporaryDir userFolder;
};
