#include "support/display-scale.h"
#include "support/themed-test.h"

#include <limits>
#include <memory>

using displayscale::px;

namespace {

using Columns = QVector<VantTableColumnsInfo::ColumnInfo>;

const QString none;
const Columns mixed { { "Name", 120, true, 0.6 }, { "Mark", 5, false, 0.0 }, { "Size", 90, true, 0.0 },
    { "Place", 101, true, 0.33 } };

struct Table : VantTableWidget
{
    Table(const Columns& described, int width, int rows = 0)
        : VantTableWidget(info(described))
    {
        body->setStyleSheet("QTableView { border: none } QTableView::item:hover { background-color: #0000FF }"
                            " QScrollBar:vertical { width: 12px }");
        body->setRowCount(rows);
        resize(width, 300);
        show();
        QCoreApplication::processEvents();
    }

    static VantTableColumnsInfo info(const Columns& described)
    {
        VantTableColumnsInfo info;
        for (const auto& [title, width, resizable, ratio] : described) {
            info.addColumn(title, width, resizable, ratio);
        }
        return info;
    }

    /** The first column that the header does not show where the body has it, or -1. */
    int misplaced()
    {
        for (int i = 0; i < body->columnCount(); ++i) {
            const QPoint above(header->sectionViewportPosition(i), 0);
            if (header->viewport()->mapTo(this, above).x() != body->columnViewportPosition(i)
                || header->sectionSize(i) != body->columnWidth(i)) {
                return i;
            }
        }
        return -1;
    }

    QHeaderView* header = getHeader();
    ResizeSignalTableWidget* body = getTable();
};

} // namespace

class TableTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void look()
    {
        auto table = std::make_unique<Table>(mixed, px(640), 5);
        QCOMPARE(table->body->geometry(), QRect(0, px(30), px(640), 300 - px(30)));
        QCOMPARE(table->header->sectionSize(4), px(12));
        // The body's own header is hidden, but it is the one that a screen reader knows.
        for (int i = 0; i <= mixed.size(); ++i) {
            QCOMPARE(table->header->model()->headerData(i, Qt::Horizontal).toString(), mixed.value(i).title);
            QCOMPARE(table->body->model()->headerData(i, Qt::Horizontal).toString(), mixed.value(i).title);
        }
        for (int height : { 100, 500 }) {
            table->resize(px(640), px(height));
            QTRY_COMPARE(table->body->verticalScrollBar()->isVisible(), height == 100);
        }
        // Built twice, and gone as a whole.
        const QPointer<QTableWidget> body = table->body;
        const QPointer<QAbstractItemModel> titles = table->header->model();
        table->initailze();
        QCOMPARE(table->getTable(), body);
        table.reset();
        QVERIFY(!body && !titles);
    }

    void widths()
    {
        const Columns halves { { none, 100, true, 0.5 }, { none, 100, true, 0.5 },
            { none, 100, false, 0.5 } };
        // With a body so wide, beside the vertical scroll bar. Two times 33 are 82.5 pixels at 120 DPI; cut
        // one by one they would be 82.
        const std::tuple<int, Columns, QVector<int>> rows[] {
            { px(500), halves, { px(200), px(200), px(100) } },
            { px(50), halves, { px(100), px(100), px(100) } },
            { 500, { { none, 33, false, 0 }, { none, 33, false, 0 }, { none, 1, true, 1.0 } },
                { px(33), px(33), displayscale::pick(434, 417, 401, 368) } },
            { 499, { { none, 101, true, 0.3 }, { none, 50, true, 0.69 }, { none, 33, false, 0 } },
                { displayscale::pick(139, 137, 151, 202), displayscale::pick(321, 315, 309, 298), px(33) } },
        };
        for (const auto& [width, columns, expected] : rows) {
            const Table table(columns, width + px(12));
            for (int i = 0; i < 3; ++i) {
                QCOMPARE(table.body->columnWidth(i), expected[i]);
            }
        }
    }

    void staysAligned()
    {
        const int most = std::numeric_limits<int>::max();
        const Columns bad { { none, -50, false, 0.0 }, { none, -50, true, 0.5 }, { none, 0, true, -3.0 },
            { none, 40, true, std::numeric_limits<double>::quiet_NaN() }, { none, 40, true, 1e300 },
            { none, most, false, 0.0 }, { none, most, true, 0.1 } };
        Columns widerThanTheHeader(500, { "Column", 100, false, 0.0 });
        widerThanTheHeader[250] = { "Share", 30, true, 0.5 };
        for (const Columns& columns : { Columns(), mixed, bad, widerThanTheHeader }) {
            Table table(columns, 640, 100);
            QScrollBar* bar = table.body->horizontalScrollBar();
            for (int width : { 333, 1200, 640 }) {
                table.resize(width, 300);
                QCoreApplication::processEvents();
                for (int part : { 4, 0, 2 }) {
                    bar->setValue(static_cast<int>(qint64(bar->maximum()) * part / 4));
                    QCOMPARE(table.misplaced(), -1);
                }
            }
        }
    }

    // A column with a share, far below its least too, one with its own width, and what stands after the last.
    void drag()
    {
        for (const auto& [section, by] :
            QVector<QPair<int, int>> { { 0, 30 }, { 0, -250 }, { 2, -25 }, { 4, -5 } }) {
            Table table(mixed, px(640));
            QHeaderView* header = table.header;
            const int before = header->sectionSize(section);
            const QPoint grip(header->sectionViewportPosition(section) + before - 2, header->height() / 2);
            const QPoint end = grip + QPoint(px(by), 0);
            QTest::mousePress(header->viewport(), Qt::LeftButton, {}, grip);
            QMouseEvent move(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(header->viewport(), &move);
            QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, end);
            const int dragged = header->sectionSize(section);
            QCOMPARE(dragged != before, section != 4);
            QCOMPARE(table.misplaced(), -1);

            // The next resize takes a share column back, and no other.
            table.resize(table.width() + 1, 300);
            table.resize(table.width() - 1, 300);
            QTRY_COMPARE(header->sectionSize(section), section == 0 ? before : dragged);
        }
    }

    void wheelOverTheHeader()
    {
        Table table(mixed, px(200), 100);
        QWidget* over = table.header->viewport();
        for (int turn = 0; turn < 50; ++turn) {
            QWheelEvent event({ 5, 5 }, over->mapToGlobal(QPoint(5, 5)), {},
                { turn < 49 ? -120 : 0, turn < 49 ? 0 : -120 }, {}, {}, Qt::NoScrollPhase, false);
            QSpontaneKeyEvent::setSpontaneous(&event); // others are not handed on to parents
            qApp->notify(over, &event);
        }
        const QScrollBar* bar = table.body->horizontalScrollBar();
        QVERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
        QCOMPARE(table.misplaced(), -1);
        QVERIFY(table.body->verticalScrollBar()->value() > 0);
    }

    void hoveredRow()
    {
        Table table(mixed, 640, 100);
        // Whether the first and last cell are in the look for it: "10" for the first alone.
        const auto hovered = [&](int row) {
            const QImage picture = table.body->viewport()->grab().toImage();
            QString cells;
            for (int column : { 0, 3 }) {
                const QRect cell = table.body->visualRect(table.body->model()->index(row, column));
                cells += picture.pixelColor(cell.center() * displayscale::ratio()) == Qt::blue ? '1' : '0';
            }
            return cells;
        };
        const auto send = [&](QEvent::Type type, const QPoint& position) {
            QHoverEvent event(type, position, {});
            QCoreApplication::sendEvent(table.body, &event);
        };
        send(QEvent::HoverMove, { px(60), px(40) });
        QCOMPARE(hovered(0) + hovered(1) + hovered(2), QString("001100"));
        table.body->verticalScrollBar()->setValue(px(28) * 2);
        QCOMPARE(hovered(3) + hovered(4), QString("1100"));
        table.setEnabled(false);
        QCOMPARE(hovered(3), QString("00"));
        table.setEnabled(true);
        send(QEvent::HoverLeave, { -1, -1 });
        QCOMPARE(hovered(3), QString("00"));
    }
};

QTEST_MAIN(TableTest)

#include "table-test.moc"
