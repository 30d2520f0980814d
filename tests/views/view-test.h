#pragma once

#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QtTest>
#include <QtWidgets>

inline int px(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

/** The base of the tests of views: seen in the theme that is shipped, with strings of the tests' own. */
class ViewTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        defaulttheme::load(userFolder.path());
        QMap<QString, QString> strings;
        for (const QString& word : words.split(' ')) {
            strings.insert(word.section('=', 0, 0), word.section('=', -1));
        }
        ComponentStrings::getInstance().installStrings(strings);
    }

private:
    /** Keys, and what they stand for if it is something else. */
    const QString words {
        "first_page prev_5_pages next_5_pages last_page pagebar_refresh accessible_calendar "
        "accessible_calendar_prev_month=Zurück accessible_calendar_next_month=Vor today=Heute "
        "sunday=1So monday=2Mo tuesday=3Di wednesday=4Mi thursday=5Do friday=6Fr saturday=7Sa "
        "month_jan=Januar month_feb=Februar month_mar=März month_apr=April month_may=Ma "
        "month_jun=Juni month_jul=Juli month_aug=August month_sep=September "
        "month_oct=Oktober month_nov=November month_dec=Dezember"
    };
    QTemporaryDir userFolder;
};
