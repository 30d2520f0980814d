#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/utils/component-strings.h>
#include <vantkit-qt/views/vant-paging-bar.h>
#include <vantkit-qt/views/vant-paging-model.h>
#include <vantkit-qt/widgets/vant-button.h>
#include <vantkit-qt/widgets/vant-icon-button.h>

#include <QAccessible>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <limits>

class PagingTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void modelCounts();
    void layout();
    void buttons();
    void actions();
    void footer();

private:
    QTemporaryDir userFolder;
};

namespace {

const int most = std::numeric_limits<int>::max();
const int least = std::numeric_limits<int>::min();

int px(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

template <class Widget>
QList<Widget*> inOrder(QWidget* bar)
{
    QList<Widget*> widgets = bar->findChildren<Widget*>();
    widgets.erase(
        std::remove_if(widgets.begin(), widgets.end(), [](auto* widget) { return widget->isHidden(); }),
        widgets.end());
    std::sort(widgets.begin(), widgets.end(), [](auto* a, auto* b) { return a->x() < b->x(); });
    return widgets;
}

/** A bar that is laid out, with what a user sees of it. */
struct Bar
{
    explicit Bar(int rowLimit, int items = 0)
        : model(rowLimit)
    {
        bar.resize(px(800), px(29));
        bar.setItemCount(items);
        bar.show();
    }

    VantIconButton* button(const char* name)
    {
        const QList<VantIconButton*> all = bar.findChildren<VantIconButton*>();
        const auto found = std::find_if(all.begin(), all.end(),
            [name](auto* one) { return one->accessibleName() == QLatin1String(name); });
        return found == all.end() ? nullptr : *found;
    }

    QList<VantButton*> pages() { return inOrder<VantButton>(&bar); }

    /**
     * "- 1 2 3 4 | first last": the numbers as a screen reader meets them, then the jump
     * buttons that can be pressed.
     */
    QString buttons()
    {
        QStringList words;
        for (VantButton* page : pages()) {
            const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(page);
            const QString word = told->state().invisible ? "-" : told->text(QAccessible::Name);
            words << (page->isEnabled() || page->text() == QLatin1String(" ") ? word : "?");
        }
        words << QStringLiteral("|");
        for (const char* name : { "first", "prev", "next", "last" }) {
            if (button(name)->isEnabled()) {
                words << QLatin1String(name);
            }
        }
        return words.join(' ');
    }

    QStringList footer()
    {
        QStringList texts;
        for (QLabel* label : inOrder<QLabel>(&bar)) {
            texts << label->text();
        }
        return texts;
    }

    VantPagingModel model;
    VantPagingBar bar { &model };
};

} // namespace

void PagingTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
    ComponentStrings::getInstance().installStrings({ { "first_page", "first" }, { "prev_5_pages", "prev" },
        { "last_page", "last" }, { "next_5_pages", "next" }, { "pagebar_refresh", "refresh" } });
}

void PagingTest::modelCounts()
{
    // The number of pages and the first item on the page shown.
    const auto counts = [](int rowLimit, int items, int page) {
        VantPagingModel model(10);
        model.setItemCount(items);
        model.setNowPage(page);
        model.setRowLimit(rowLimit);
        return QVector<int> { model.pageCount(), model.startItem() };
    };
    using Counts = QVector<int>;
    QCOMPARE(counts(25, 26, 2), Counts({ 2, 25 }));
    QCOMPARE(counts(25, 50, 7), Counts({ 2, 150 }));
    QCOMPARE(counts(1, most, most), Counts({ most, most - 1 }));
    QCOMPARE(counts(most, 1, least), Counts({ 1, least }));
    QCOMPARE(counts(0, 100, 3), Counts({ 1, 0 }));
    QCOMPARE(counts(-1, least, 3), Counts({ 1, -2 }));
}

void PagingTest::layout()
{
    Bar shown(10, 100);
    shown.bar.setPage(5);
    shown.bar.setFooterInfos({ { QStringLiteral("a"), 30 }, { QStringLiteral("b"), 40 } });
    QTRY_COMPARE(inOrder<QLabel>(&shown.bar).size(), 2);

    QList<QWidget*> widgets { shown.button("first"), shown.button("prev") };
    for (VantButton* page : shown.pages()) {
        widgets << page;
        QCOMPARE(page->size(), QSize(px(28), px(27)));
    }
    widgets << shown.button("next") << shown.button("last");
    for (QLabel* label : inOrder<QLabel>(&shown.bar)) {
        widgets << label;
        QCOMPARE(label->size(), QSize(px(label->text() == "a" ? 30 : 40), px(19)));
    }
    widgets << shown.button("refresh");

    // Left to right, with these widths between them; -1 is what is left over, the same on both sides.
    const QList<int> expected { px(50), 0, -1, px(4), px(4), px(4), px(4), -1, 0, px(50), 0, 0 };
    QList<int> gaps;
    int end = 0;
    for (QWidget* widget : widgets) {
        gaps << widget->x() - end;
        end = widget->x() + widget->width();
    }
    QCOMPARE(end, px(800));
    QVERIFY(gaps.at(2) > px(50) && qAbs(gaps.at(2) - gaps.at(7)) <= 1);
    gaps[2] = gaps[7] = -1;
    QCOMPARE(gaps, expected);

    Bar narrow(1, 99999);
    narrow.bar.setPage(12345);
    QCoreApplication::processEvents();
    narrow.bar.resize(1, px(29));
    for (VantButton* page : narrow.pages()) {
        QVERIFY(page->width() >= page->sizeHint().width());
    }
}

void PagingTest::buttons()
{
    const auto buttons = [](int rowLimit, int items, int page) {
        Bar shown(rowLimit, items);
        QSignalSpy changes(&shown.bar, SIGNAL(sigPageChanged()));
        shown.bar.setPage(page);
        return changes.isEmpty() && shown.model.nowPage() == page ? shown.buttons() : QString();
    };
    QCOMPARE(buttons(10, 0, 1), QString("- - 1 - - |"));
    QCOMPARE(buttons(10, 70, 1), QString("- - 1 2 3 | next last"));
    QCOMPARE(buttons(10, 70, 4), QString("2 3 4 5 6 | first prev next last"));
    QCOMPARE(buttons(10, 70, 7), QString("5 6 7 - - | first prev"));
    QCOMPARE(buttons(10, 70, 0), QString("- - - 1 2 | first prev next last"));
    QCOMPARE(buttons(1, most, most), QString("2147483645 2147483646 2147483647 - - | first prev"));
    QCOMPARE(buttons(1, most, least), QString("- - - - - | first prev next last"));

    Bar shown(10, 70);
    shown.bar.setPage(7);
    shown.bar.setItemCount(30);
    QCOMPARE(shown.buttons(), QString("- - - - - | first prev"));

    const VantPagingBar another(&shown.model); // which begins anew
    QCOMPARE(shown.model.nowPage() + shown.model.itemCount(), 1);
}

void PagingTest::actions()
{
    // The page that each leads to, as a slot of the signal sees it.
    const auto pageAfter = [](int items, int page, const char* action) {
        Bar shown(1, items);
        shown.bar.setPage(page);
        QCoreApplication::processEvents();
        QList<int> seen;
        const auto note = [&] { seen << shown.model.nowPage(); };
        connect(&shown.bar, &VantPagingBar::sigPageChanged, &shown.bar, note);
        if (*action == '\0') {
            shown.bar.reset();
        } else if (QAbstractButton* jump = shown.button(action)) {
            QTest::mouseClick(jump, Qt::LeftButton);
        } else {
            QAccessible::queryAccessibleInterface(shown.pages().at(*action - '0'))
                ->actionInterface()
                ->doAction(QAccessibleActionInterface::pressAction());
        }
        return seen;
    };
    using Pages = QList<int>;
    QCOMPARE(pageAfter(7, 4, "0"), Pages { 2 });
    QCOMPARE(pageAfter(7, 4, "next"), Pages { 7 });
    QCOMPARE(pageAfter(17, -20, "next"), Pages { -15 });
    QCOMPARE(pageAfter(most, most - 2, "next"), Pages { most });
    QCOMPARE(pageAfter(17, 11, "prev"), Pages { 6 });
    QCOMPARE(pageAfter(7, least, "prev"), Pages { 1 });
    QCOMPARE(pageAfter(3, 7, "first"), Pages { 1 });
    QCOMPARE(pageAfter(most, 1, "last"), Pages { most });
    QCOMPARE(pageAfter(7, 5, ""), Pages { 1 });
}

void PagingTest::footer()
{
    Bar shown(10, 70);
    QSignalSpy changes(&shown.bar, SIGNAL(sigPageChanged()));
    QSignalSpy refreshs(&shown.bar, SIGNAL(sigRefresh()));
    shown.bar.setFooterInfos({ { "one", 100 }, { "two", 0 }, { "three", 50 } });
    QTRY_COMPARE(shown.footer(), QStringList({ "three", "two", "one" }));
    const QList<QLabel*> three = inOrder<QLabel>(&shown.bar);

    // The one that stays keeps its width; the others are hidden, and are not used again.
    shown.bar.setFooterText(QStringLiteral("1"));
    QCOMPARE(shown.footer(), QStringList { "1" });
    QCOMPARE(inOrder<QLabel>(&shown.bar), QList<QLabel*>({ three.at(2) }));
    QCOMPARE(three.at(2)->width(), px(100));
    shown.bar.setFooterInfos({ { "un", 60 }, { "deux", 70 } });
    QTRY_COMPARE(shown.footer(), QStringList({ "deux", "un" }));
    QCOMPARE(three.at(2)->maximumWidth(), px(60));
    shown.bar.setFooterInfos({});

    QTest::mouseClick(shown.button("refresh"), Qt::LeftButton);
    QCOMPARE(refreshs.size(), 1);
    QCOMPARE(changes.size(), 0);

    // What comes first while the refresh button is hidden ends the bar.
    shown.bar.setRefreshButtonHidden(true);
    shown.bar.setFooterInfos({ { "a", 0 }, { "b", 0 } });
    shown.bar.setRefreshButtonHidden(false);
    QStringList sheets;
    for (const QLabel* label : shown.bar.findChildren<QLabel*>().mid(3)) {
        sheets << label->styleSheet();
        QVERIFY(label->alignment() == (Qt::AlignRight | Qt::AlignVCenter));
    }
    const QString inside = getStyleSheet("component.paging_bar_label");
    QCOMPARE(sheets, QStringList({ inside, getStyleSheet("component.paging_bar_rightmost_label"), inside }));
}

QTEST_MAIN(PagingTest)

#include "paging-test.moc"
