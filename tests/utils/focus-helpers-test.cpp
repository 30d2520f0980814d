#include "support/guarded-test.h"

#include <vantkit-qt/vantkit.h>

#include <QtTest>

/** The walk over widgets, and the free functions beside it. */
class FocusHelpersTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void lists();
    void toolTips();
    void closeButtonWithoutWindow();
};

namespace {

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

void FocusHelpersTest::lists()
{
    QWidget window;
    QWidget* top = child(&window, "top", Qt::NoFocus);
    QWidget* box = child(top, "box", Qt::StrongFocus);
    child(box, "inner", Qt::ClickFocus);
    child(box, "plain", Qt::NoFocus);
    QWidget* last = child(top, "last", Qt::TabFocus);
    window.show();
    QWidget::setTabOrder(last, box); // which plays no part

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
    QCOMPARE(accessibleList(top, AccessibleFilter()) + accessibleList(nullptr, filter), QList<QWidget*>());
}

void FocusHelpersTest::toolTips()
{
    QCOMPARE(getHtmlEscapedStringForToolTip("a <b>&\"c\"\n\nd\r\ne"),
        QString("<p style='white-space:pre'>a &lt;b&gt;&amp;&quot;c&quot;<br><br>d\r<br>e</p>"));
    QCOMPARE(getHtmlEscapedStringForToolTip({}), QString("<p style='white-space:pre'></p>"));
}

void FocusHelpersTest::closeButtonWithoutWindow()
{
    void* state = nullptr;
    SHAPISetCloseButtonOfWindowEnable(nullptr, false, &state);
    QWidget window;
    SHAPISetCloseButtonOfWindowEnable(&window, false, &state);
    QVERIFY(!window.windowHandle());
}

QTEST_MAIN(FocusHelpersTest)

#include "focus-helpers-test.moc"
