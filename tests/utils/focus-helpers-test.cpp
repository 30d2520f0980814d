#include "support/guarded-test.h"

#include <vantkit-qt/vantkit.h>

#include <QtTest>

using Names = QStringList;

/** The walk over widgets, and the free functions beside it. */
class FocusHelpersTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void lists_data();
    void lists();
    void byPolicy_data();
    void byPolicy();
    void policies();
    void toolTips_data();
    void toolTips();
    void closeButtonWithoutWindow();

private:
    static Names namesOf(const QList<QWidget*>& widgets)
    {
        Names names;
        for (const QWidget* widget : widgets) {
            names += widget->objectName();
        }
        return names;
    }
};

namespace {

QWidget* child(QWidget* parent, const char* name, Qt::FocusPolicy policy)
{
    auto* widget = new QWidget(parent);
    widget->setObjectName(QLatin1String(name));
    widget->setFocusPolicy(policy);
    return widget;
}

} // namespace

void FocusHelpersTest::lists_data()
{
    QTest::addColumn<QString>("excluded");
    QTest::addColumn<QString>("hidden");
    QTest::addColumn<Names>("focusable");
    QTest::addColumn<Names>("filtered");
    const auto row = [](const char* excluded, const char* hidden, const char* focusable,
                         const char* filtered) {
        QTest::addRow("without %s, %s hidden", excluded, hidden)
            << QString::fromLatin1(excluded) << QString::fromLatin1(hidden)
            << QString::fromLatin1(focusable).split(QLatin1Char(' '), Qt::SkipEmptyParts)
            << QString::fromLatin1(filtered).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    // top has the children box, with inner and plain in it, and last.
    row("none", "none", "box inner last", "top box inner plain last");
    row("box", "none", "inner last", "top inner plain last");
    row("none", "box", "last", "top last");
    row("none", "top", "", "");
    row("top", "plain", "box inner last", "box inner last");
}

void FocusHelpersTest::lists()
{
    QFETCH(QString, excluded);
    QFETCH(QString, hidden);
    QWidget top;
    top.setObjectName(QStringLiteral("top"));
    QWidget* box = child(&top, "box", Qt::StrongFocus);
    child(&top, "last", Qt::TabFocus);
    child(box, "inner", Qt::ClickFocus);
    child(box, "plain", Qt::NoFocus);
    top.show();
    const auto named = [&top](const QString& name) {
        return name == top.objectName() ? &top : top.findChild<QWidget*>(name);
    };
    if (QWidget* widget = named(hidden)) {
        widget->hide();
    }
    // The order of Qt's tab chain plays no part.
    QWidget::setTabOrder(named(QStringLiteral("last")), box);
    const QList<QWidget*> without { named(excluded) };
    QTEST(namesOf(accessibleList(&top, without)), "focusable");
    AccessibleFilter filter;
    filter.setFilterWidgets(without);
    QTEST(namesOf(accessibleList(&top, filter)), "filtered");
    QCOMPARE(accessibleList(nullptr, without) + accessibleList(nullptr, filter), QList<QWidget*>());
}

void FocusHelpersTest::byPolicy_data()
{
    QTest::addColumn<Qt::FocusPolicy>("level");
    QTest::addColumn<Names>("names");
    const Names all { QStringLiteral("none"), QStringLiteral("tab"), QStringLiteral("click"),
        QStringLiteral("strong"), QStringLiteral("wheel") };
    QTest::newRow("none") << Qt::NoFocus << all;
    QTest::newRow("tab") << Qt::TabFocus << Names(all.mid(1));
    QTest::newRow("click") << Qt::ClickFocus << Names(all.mid(2));
    QTest::newRow("strong") << Qt::StrongFocus << Names(all.mid(3));
    QTest::newRow("wheel") << Qt::WheelFocus << Names(all.mid(4));
}

void FocusHelpersTest::byPolicy()
{
    QFETCH(Qt::FocusPolicy, level);
    QWidget top;
    child(&top, "none", Qt::NoFocus);
    child(&top, "tab", Qt::TabFocus);
    child(&top, "click", Qt::ClickFocus);
    child(&top, "strong", Qt::StrongFocus);
    child(&top, "wheel", Qt::WheelFocus);
    top.show();
    AccessibleFilter filter({}, level);
    QCOMPARE(filter.focusLevel(), level);
    filter.filterWidgets() += &top;
    QTEST(namesOf(accessibleList(&top, filter)), "names");
    filter.setFocusLevel(Qt::WheelFocus);
    QCOMPARE(accessibleList(&top, filter).size(), 1);
}

void FocusHelpersTest::policies()
{
    QWidget first, second;
    adjustFocusPolicy(Qt::ClickFocus, { &first, &second });
    QCOMPARE(first.focusPolicy(), Qt::ClickFocus);
    QCOMPARE(second.focusPolicy(), Qt::ClickFocus);
}

void FocusHelpersTest::toolTips_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("inner");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("tags") << QStringLiteral("a <b>&\"c\"") << QStringLiteral("a &lt;b&gt;&amp;&quot;c&quot;");
    QTest::newRow("lines") << QStringLiteral("a\n\nb\r\nc") << QStringLiteral("a<br><br>b\r<br>c");
}

void FocusHelpersTest::toolTips()
{
    QFETCH(QString, text);
    QFETCH(QString, inner);
    QCOMPARE(
        getHtmlEscapedStringForToolTip(text), QStringLiteral("<p style='white-space:pre'>%1</p>").arg(inner));
}

void FocusHelpersTest::closeButtonWithoutWindow()
{
    void* state = nullptr;
    SHAPISetCloseButtonOfWindowEnable(nullptr, false, &state);
    QWidget window;
    SHAPISetCloseButtonOfWindowEnable(&window, false, &state);
    QVERIFY(!window.windowHandle());
    QVERIFY(!state);
}

QTEST_MAIN(FocusHelpersTest)

#include "focus-helpers-test.moc"
