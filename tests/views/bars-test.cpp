#include "support/display-scale.h"
#include "support/themed-test.h"

#include <functional>

using displayscale::px;

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

    void press(const QString& name) const
    {
        for (QWidget* part : parts()) {
            QAccessibleInterface* told = QAccessible::queryAccessibleInterface(part);
            if (told->text(QAccessible::Name) == name) {
                return told->actionInterface()->doAction("Press");
            }
        }
    }

    /** As a screen reader meets them. */
    template <class Widget = QWidget>
    QString names() const
    {
        QStringList found;
        for (Widget* part : parts<Widget>()) {
            found << QAccessible::queryAccessibleInterface(part)->text(QAccessible::Name);
        }
        return found.join(' ');
    }

    /** "- 1 2 3 4 | first last": as a screen reader meets them, then the jump buttons that can be pressed. */
    QString buttons() const
    {
        QStringList words;
        for (VantButton* page : parts<VantButton>()) {
            QAccessibleInterface* told = QAccessible::queryAccessibleInterface(page);
            const bool isThere = told->actionInterface()->actionNames().contains("Press");
            words << (isThere == told->state().invisible ? "?" : isThere ? page->text() : "-");
        }
        words << "|";
        for (auto* jump : bar.findChildren<VantIconButton*>().mid(0, 4)) {
            words << (jump->isEnabled() ? jump->accessibleName().split('_').mid(0, 1) : QStringList());
        }
        return words.join(' ');
    }

    VantPagingModel model;
    VantPagingBar bar { &model };
};

/** A window with the bar, which has the focus, before a field; it counts the keys let through. */
struct FilterWindow : QWidget
{
    FilterWindow()
    {
        bar->move(0, 40);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        bar->setText("report");
        bar->setFocus();
    }

    void keyPressEvent(QKeyEvent* /*event*/) override { ++keysSeen; }

    int keysSeen = 0;
    QPointer<VantFilterBar> bar = new VantFilterBar(this);
    QLineEdit* after = new QLineEdit(this);
    QToolButton* button = bar->findChild<QToolButton*>();
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(bar)->child(0);
};

} // namespace

/** The paging bar and the filter bar. */
class BarsTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void pagingModel()
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
    void pagingLayout()
    {
        Bar shown(10, 100, 5);
        shown.bar.setFooterInfos({ { "a", 30 }, { "b", 40 } });
        QTRY_COMPARE(shown.names(),
            QString("first_page prev_5_pages 3 4 5 6 7 next_5_pages last_page b a pagebar_refresh"));
        QList<int> gaps;
        int end = 0;
        for (QWidget* part : shown.parts()) {
            gaps << part->x() - end;
            end = part->geometry().right() + 1;
        }
        QCOMPARE(end, px(800));
        QVERIFY(gaps[2] > px(50) && qAbs(gaps[2] - gaps[7]) <= 1);
        gaps[2] = gaps[7] = -1;
        QCOMPARE(gaps, QList<int>({ px(50), 0, -1, px(4), px(4), px(4), px(4), -1, 0, px(50), 0, 0 }));
        QCOMPARE(shown.parts<VantButton>()[4]->size(), QSize(px(28), px(27)));
        QCOMPARE(shown.parts<QLabel>()[0]->size(), QSize(px(40), px(19)));
        QCOMPARE(shown.parts().last()->y(), displayscale::dpi() == 96 ? 3 : 4);

        Bar narrow(1, 99999, 12345);
        narrow.bar.resize(1, px(29));
        for (VantButton* page : narrow.parts<VantButton>()) {
            QVERIFY(page->width() >= page->sizeHint().width());
        }
    }

    void pagingButtons()
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

    void pagingActions()
    {
        using Pages = QList<int>;
        const std::tuple<int, int, QString, Pages> rows[] { { 7, 4, "2", { 2 } },
            { 7, 4, "next_5_pages", { 7 } }, { 17, -20, "next_5_pages", { -15 } },
            { most, most - 2, "next_5_pages", { most } }, { 17, 11, "prev_5_pages", { 6 } },
            { 7, least, "prev_5_pages", { 1 } }, { 3, 7, "first_page", { 1 } },
            { most, 1, "last_page", { most } }, { 7, 5, "", { 1 } }, { 7, 5, "pagebar_refresh", { -5 } } };
        for (const auto& [items, page, action, pages] : rows) {
            Bar shown(1, items, page);
            Pages seen; // by slots of the signals
            connect(&shown.bar, &VantPagingBar::sigPageChanged, [&] { seen << shown.model.nowPage(); });
            connect(&shown.bar, &VantPagingBar::sigRefresh, [&] { seen << -shown.model.nowPage(); });
            action.isEmpty() ? shown.bar.reset() : shown.press(action);
            QCOMPARE(seen, pages);
        }
    }

    void pagingFooter()
    {
        Bar shown(10, 70);
        shown.bar.setFooterInfos({ { "one", 100 }, { "two", 0 }, { "three", 50 } });
        QTRY_COMPARE(shown.names<QLabel>(), QString("three two one"));

        // The one that stays keeps its width; the others are hidden, and are not used again.
        const QList<QLabel*> first { shown.parts<QLabel>()[2] };
        shown.bar.setFooterText("1");
        QCOMPARE(shown.parts<QLabel>(), first);
        QCOMPARE(first[0]->width(), px(100));
        shown.bar.setFooterInfos({ { "un", 60 }, { "deux", 70 } });
        QTRY_COMPARE(shown.names<QLabel>(), QString("deux un"));
        QCOMPARE(first[0]->width(), px(60));
        shown.bar.setFooterInfos({});

        // What comes first while the refresh button is hidden ends the bar.
        shown.bar.setRefreshButtonHidden(true);
        shown.bar.setFooterInfos({ { "a", 0 }, { "b", 0 } });
        shown.bar.setRefreshButtonHidden(false);
        const QList<QLabel*> labels = shown.bar.findChildren<QLabel*>().mid(3);
        QCOMPARE(labels[0]->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        QCOMPARE(labels[1]->styleSheet(), getStyleSheet("component.paging_bar_rightmost_label"));
        for (const QLabel* label : { labels[0], labels[2] }) {
            QCOMPARE(label->styleSheet(), getStyleSheet("component.paging_bar_label"));
        }
    }

    void filterKeyword()
    {
        const FilterWindow window;
        VantFilterBar* bar = window.bar;
        bar->setLayoutDirection(Qt::RightToLeft);
        for (int width : { 200, 300 }) {
            bar->resize(width, bar->height());
            QCOMPARE(window.button->geometry(), QRect(width - px(4) - px(34), px(2), px(34), px(24)));
        }
        bar->setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(window.button->x(), px(4));
        QCOMPARE(window.button->cursor().shape(), Qt::ArrowCursor);
        QVERIFY(!bar->testAttribute(Qt::WA_MacShowFocusRect));
        bar->setAccessibleName("Find");
        QCOMPARE(window.told->text(QAccessible::Name), QString("Find"));

        QSignalSpy keywords(bar, SIGNAL(sigKeywordChanged(QString)));
        QTest::keyClicks(bar, "s 2017");
        QTest::keyClick(bar, Qt::Key_Return);
        bar->clear();
        QTest::keyClick(bar, Qt::Key_Return);
        QCOMPARE(keywords, QList<QVariantList>({ { "reports 2017" }, { "" } }));
        QTest::keyClick(bar, Qt::Key_Tab); // in one step, past the button
        QVERIFY(window.after->hasFocus());
    }

    void filterMenu()
    {
        QMenu menu;
        menu.addAction("Pictures");
        const FilterWindow window;
        QVector<QPoint> corners;
        const auto close = [&] {
            corners << menu.pos();
            menu.hide();
        };
        connect(&menu, &QMenu::aboutToShow, &menu, close, Qt::QueuedConnection);
        const auto ask = [&] { window.told->actionInterface()->doAction("ShowMenu"); };
        const std::function<void()> ways[] { [&] { QTest::keyClick(window.bar, Qt::Key_Down); },
            [&] { QTest::mouseClick(window.button, Qt::LeftButton); }, ask };
        for (const bool hasMenu : { true, false }) {
            window.bar->setMenu(hasMenu ? &menu : nullptr);
            QCOMPARE(bool(window.told->state().hasPopup), hasMenu);
            const QPoint corner = window.button->mapToGlobal(QPoint(0, window.button->height()));
            for (const auto& open : ways) {
                corners.clear();
                open();
                QCoreApplication::processEvents();
                QTRY_COMPARE(corners, QVector<QPoint>(hasMenu ? 1 : 0, corner));
                QCOMPARE(window.focusWidget(), window.bar);
            }
        }
        QTest::keyClick(window.bar, Qt::Key_Up); // the only one that the bar has no use for
        QCOMPARE(window.keysSeen, 1);

        // A choice may close the whole list that the bar stands above, while its key is still on the stack.
        window.bar->setMenu(&menu);
        connect(&menu, &QMenu::aboutToHide, this, [&] { delete window.bar; });
        QTest::keyClick(window.bar, Qt::Key_Down);
        QTRY_VERIFY(!window.bar);
    }
};

QTEST_MAIN(BarsTest)

#include "bars-test.moc"
