#include "views/view-test.h"

#include <QAccessible>

namespace {

const int most = std::numeric_limits<int>::max();
const int least = std::numeric_limits<int>::min();

/** A bar that is laid out, with what a user sees of it. */
struct Bar
{
    explicit Bar(int rowLimit, int items = 0, int page = 1)
        : model(rowLimit)
    {
        bar.resize(px(800), px(29));
        bar.setItemCount(items);
        bar.setPage(page);
        bar.show();
    }

    /** Those of a kind that are not hidden, from left to right. */
    template <class Widget = QWidget>
    QList<Widget*> parts() const
    {
        QList<Widget*> found;
        for (auto* part : bar.findChild<QWidget*>("PAGINGBARBORDER")->findChildren<Widget*>()) {
            found << (part->isHidden() ? QList<Widget*>() : QList<Widget*> { part });
        }
        std::sort(found.begin(), found.end(), [](auto* a, auto* b) { return a->x() < b->x(); });
        return found;
    }

    VantIconButton* button(const QString& name) const
    {
        const auto all = bar.findChildren<VantIconButton*>();
        return *std::find_if(
            all.begin(), all.end(), [&](auto* one) { return one->accessibleName() == name; });
    }

    /** "- 1 2 3 4 | first last": as a screen reader meets them, then the jump buttons that can be pressed. */
    QString buttons() const
    {
        QStringList words;
        for (VantButton* page : parts<VantButton>()) {
            QAccessibleInterface* told = QAccessible::queryAccessibleInterface(page);
            const bool pressed = told->actionInterface()->actionNames().contains("Press");
            words << (pressed == told->state().invisible ? "?"
                    : pressed                            ? told->text(QAccessible::Name)
                                                         : "-");
        }
        words << "|";
        for (const char* name : { "first_page", "prev_5_pages", "next_5_pages", "last_page" }) {
            words << (button(name)->isEnabled() ? QStringList(QString(name).section('_', 0, 0))
                                                : QStringList());
        }
        return words.join(' ');
    }

    QStringList footer() const
    {
        QStringList texts;
        for (QLabel* label : parts<QLabel>()) {
            texts << label->text();
        }
        return texts;
    }

    VantPagingModel model;
    VantPagingBar bar { &model };
};

} // namespace

class PagingTest : public ViewTest
{
    Q_OBJECT

private Q_SLOTS:

    void modelCounts()
    {
        const int rows[][5] { { 25, 26, 2, 2, 25 }, { 25, 50, 7, 2, 150 }, { most, 1, 3, 1, most },
            { most, 1, least, 1, least }, { 0, 100, 3, 1, 0 } };
        for (const auto& [rowLimit, items, page, pages, first] : rows) {
            VantPagingModel model(10);
            model.setItemCount(items);
            model.setNowPage(page);
            model.setRowLimit(rowLimit);
            QCOMPARE(model.pageCount(), pages);
            QCOMPARE(model.startItem(), first);
        }
    }

    // From left to right, with these widths between them; both -1 are what is left over, in equal parts.
    void layout()
    {
        Bar shown(10, 100, 5);
        shown.bar.setFooterInfos({ { "a", 30 }, { "b", 40 } });
        QTRY_COMPARE(shown.footer(), QStringList({ "b", "a" }));
        QStringList names;
        QList<int> gaps;
        int end = 0;
        for (QWidget* part : shown.parts()) {
            names << QAccessible::queryAccessibleInterface(part)->text(QAccessible::Name);
            gaps << part->x() - end;
            end = part->geometry().right() + 1;
        }
        QCOMPARE(names.join(' '),
            QString("first_page prev_5_pages 3 4 5 6 7 next_5_pages last_page b a pagebar_refresh"));
        QCOMPARE(end, px(800));
        QVERIFY(gaps[2] > px(50) && qAbs(gaps[2] - gaps[7]) <= 1);
        gaps[2] = gaps[7] = -1;
        QCOMPARE(gaps, QList<int>({ px(50), 0, -1, px(4), px(4), px(4), px(4), -1, 0, px(50), 0, 0 }));
        QCOMPARE(shown.parts<VantButton>()[4]->size(), QSize(px(28), px(27)));
        QCOMPARE(shown.parts<QLabel>()[0]->size(), QSize(px(40), px(19)));
        QCOMPARE(shown.button("pagebar_refresh")->y(), displayscale::dpi() == 96 ? 3 : 4);

        Bar narrow(1, 99999, 12345);
        narrow.bar.resize(1, px(29));
        for (VantButton* page : narrow.parts<VantButton>()) {
            QVERIFY(page->width() >= page->sizeHint().width());
        }
    }

    void buttons()
    {
        const std::tuple<int, int, int, QString> rows[] { { 10, 0, 1, "- - 1 - - |" },
            { 10, 70, 1, "- - 1 2 3 | next last" }, { 10, 70, 4, "2 3 4 5 6 | first prev next last" },
            { 10, 70, 7, "5 6 7 - - | first prev" }, { 10, 70, 0, "- - - 1 2 | first prev next last" },
            { 1, most, least, "- - - - - | first prev next last" } };
        for (const auto& [rowLimit, items, page, buttons] : rows) {
            const Bar shown(rowLimit, items, page);
            QCOMPARE(shown.buttons(), buttons);
            QCOMPARE(shown.model.nowPage(), page);
        }
        Bar shown(10, 70, 7);
        shown.bar.setItemCount(30);
        QCOMPARE(shown.buttons(), QString("- - - - - | first prev"));

        const VantPagingBar another(&shown.model); // which begins anew
        QCOMPARE(shown.model.nowPage() + shown.model.itemCount(), 1);
    }

    void actions()
    {
        using Pages = QList<int>;
        const std::tuple<int, int, QString, Pages> rows[] { { 7, 4, "0", { 2 } },
            { 7, 4, "next_5_pages", { 7 } }, { 17, -20, "next_5_pages", { -15 } },
            { most, most - 2, "next_5_pages", { most } }, { 17, 11, "prev_5_pages", { 6 } },
            { 7, least, "prev_5_pages", { 1 } }, { 3, 7, "first_page", { 1 } },
            { most, 1, "last_page", { most } }, { 7, 5, "", { 1 } }, { 7, 5, "pagebar_refresh", { -5 } } };
        for (const auto& [items, page, action, pages] : rows) {
            Bar shown(1, items, page);
            Pages seen; // by slots of the signals
            connect(&shown.bar, &VantPagingBar::sigPageChanged, [&] { seen << shown.model.nowPage(); });
            connect(&shown.bar, &VantPagingBar::sigRefresh, [&] { seen << -shown.model.nowPage(); });
            if (action.isEmpty()) {
                shown.bar.reset();
            } else if (action == "0") {
                QAccessible::queryAccessibleInterface(shown.parts<VantButton>()[0])
                    ->actionInterface()
                    ->doAction("Press");
            } else {
                QTest::mouseClick(shown.button(action), Qt::LeftButton);
            }
            QCOMPARE(seen, pages);
        }
    }

    void footer()
    {
        Bar shown(10, 70);
        shown.bar.setFooterInfos({ { "one", 100 }, { "two", 0 }, { "three", 50 } });
        QTRY_COMPARE(shown.footer(), QStringList({ "three", "two", "one" }));

        // The one that stays keeps its width; the others are hidden, and are not used again.
        const QList<QLabel*> first { shown.parts<QLabel>()[2] };
        shown.bar.setFooterText("1");
        QCOMPARE(shown.parts<QLabel>(), first);
        QCOMPARE(first[0]->width(), px(100));
        shown.bar.setFooterInfos({ { "un", 60 }, { "deux", 70 } });
        QTRY_COMPARE(shown.footer(), QStringList({ "deux", "un" }));
        QCOMPARE(first[0]->width(), px(60));
        shown.bar.setFooterInfos({});

        // What comes first while the refresh button is hidden ends the bar.
        shown.bar.setRefreshButtonHidden(true);
        shown.bar.setFooterInfos({ { "a", 0 }, { "b", 0 } });
        shown.bar.setRefreshButtonHidden(false);
        QStringList sheets;
        for (const QLabel* label : shown.bar.findChildren<QLabel*>().mid(3)) {
            sheets << label->styleSheet();
            QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        }
        const QString inside = getStyleSheet("component.paging_bar_label");
        QCOMPARE(
            sheets, QStringList({ inside, getStyleSheet("component.paging_bar_rightmost_label"), inside }));
    }
};

QTEST_MAIN(PagingTest)

#include "paging-test.moc"
