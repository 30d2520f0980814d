#include "support/display-scale.h"
#include "support/guarded-test.h"

#include <vantkit-qt/vantkit.h>

#include <QtTest>

namespace {

QString scaled(const QString& text)
{
    return DPIinfo::getInstance().getScaledStyleSheet(text);
}

QWidget* child(QWidget* parent, const char* name, Qt::FocusPolicy policy)
{
    auto* widget = new QWidget(parent);
    widget->setObjectName(name);
    adjustFocusPolicy(policy, { widget });
    return widget;
}

QString namesOf(const QList<QWidget*>& widgets)
{
    QStringList names;
    for (const QWidget* widget : widgets) {
        names += widget->objectName();
    }
    return names.join(' ');
}

} // namespace

class UtilsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void scaledStyleSheet()
    {
        QCOMPARE(scaled("0px 1px 3px 10px 2.5px .5px -3px a_16px.png 10PX 10 px 12pt %1 <p>"),
            QString(displayscale::pick("0px 1px 3px 10px 2px .5px -3px a_16px.png 10PX 10 px 12pt %1 <p>",
                "0px 1px 3px 12px 3px .6px -3px a_20px.png 10PX 10 px 12pt %1 <p>",
                "0px 1px 4px 15px 3px .7px -4px a_24px.png 10PX 10 px 12pt %1 <p>",
                "0px 2px 6px 20px 5px .10px -6px a_32px.png 10PX 10 px 12pt %1 <p>")));
        // Only the last point belongs to a number, if a digit stands before it; what a value ends in is kept.
        QCOMPARE(scaled("px1.px..3px2.4.8pxpx 9"),
            QString(displayscale::pick(
                "px1px..3px2.4pxpx 9", "px1px..3px2.6pxpx 9", "px1px..4px2.7pxpx 9", "px2px..6px2.9pxpx 9")));
        QCOMPARE(scaled("99999999999px"), QString("2147483647px"));
        QCOMPARE(DPIinfo::getInstance().getDPR(), double(displayscale::ratio()));
        // Takes minutes, and the test its limit, if digits without a unit are read again and again.
        const QString digits(1000000, '4');
        QCOMPARE(scaled(digits), digits);
    }

    void kindsOfFiles()
    {
        FileTypeMap& map = FileTypeMap::getInstance();
        // Of each kind the last extension, and what could have gone elsewhere.
        const char* const rows[] = { "maf acc", "ai ai", "wma audio", "bkpi bkpi", "rtf doc", "exe exe",
            "fla fla", "html htm", "idn idn", "gif image", "daa iso", "cxx code", "pdf pdf", "ppsx ppt",
            "psd psd", "f4v swf", "otf ttf", "txt txt", "webm video", "xlam xls", "rar zip", "ac3 video",
            "Jpg image", ".jpg xxx", "mp xxx", " xxx" };
        for (const QString row : rows) {
            const QString extension = row.section(' ', 0, 0);
            QCOMPARE(map.getFiletypeMapping(extension, false), row.section(' ', 1) + ".png");
            QCOMPARE(map.getFiletypeMapping(extension, true), row.section(' ', 1) + "_removed.png");
        }
        map.mappingFile("archive", "new RaR  Older");
        for (const char* const extension : { "NEW", "rar", "older", "" }) {
            QCOMPARE(map.getFiletypeMapping(extension, false), QString("archive.png"));
        }
    }

    void languages()
    {
        VantLocale table;
        table.setLanguageMap("fi", "new");
        table.setLanguageMap("en", "new");
        table.setLanguageMap("zh", "new");
        for (const QString row : { "ja_jp jpn", "nb_no nor", "cs_cz csy", "pt ptg", "pt_pt ptg", "pt_br ptb",
                 "pt_pt_x ptb", "zh chs", "zh_sg chs", "zh_tw cht", "zh_hk cht", "zh_mo cht", "zh_tw_x chs",
                 "en_gb new", "fi_fi new", "xx_xx enu", " enu", "_de enu", "DE enu", "zh-tw enu" }) {
            QCOMPARE(row.section(' ', 0, 0) + ' ' + table.getLanguageByLocale(row.section(' ', 0, 0)), row);
        }
    }

    void focusableWidgets()
    {
        QWidget window;
        QWidget* top = child(&window, "top", Qt::NoFocus);
        QWidget* box = child(top, "box", Qt::StrongFocus);
        child(box, "inner", Qt::ClickFocus);
        child(box, "plain", Qt::NoFocus);
        child(top, "last", Qt::TabFocus);
        window.show();

        QCOMPARE(namesOf(accessibleList(top, QList<QWidget*>())), QString("box inner last"));
        QCOMPARE(namesOf(accessibleList(top, { box })), QString("inner last"));
        AccessibleFilter filter({ box }, Qt::NoFocus);
        QCOMPARE(namesOf(accessibleList(top, filter)), QString("top inner plain last"));
        filter.setFilterWidgets({});
        filter.filterWidgets() += top;
        filter.setFocusLevel(Qt::TabFocus);
        QCOMPARE(namesOf(accessibleList(top, filter)), QString("box inner last"));
        filter.setFocusLevel(Qt::ClickFocus);
        QCOMPARE(namesOf(accessibleList(top, filter)), QString("box inner"));

        box->hide();
        QCOMPARE(namesOf(accessibleList(top, AccessibleFilter())), QString("top last"));
        window.hide();
        QCOMPARE(
            accessibleList(top, AccessibleFilter()) + accessibleList(nullptr, filter), QList<QWidget*>());
    }

    void paths()
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
    }

    void strings()
    {
        QCOMPARE(getHtmlEscapedStringForToolTip("a <b>&\"c\"\n\nd\r\ne"),
            QString("<p style='white-space:pre'>a &lt;b&gt;&amp;&quot;c&quot;<br><br>d\r<br>e</p>"));

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
};

QTEST_MAIN(UtilsTest)

#include "utils-test.moc"
