#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest>

#include <limits>
#include <memory>

using Columns = QVector<VantTableColumnsInfo::ColumnInfo>;

/** The table with a header of its own. */
class TableTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void look();
    void widths();
    void staysAligned();
    void drag();
    void wheelOverTheHeader();
    void hoveredRow();
    void builtTwice();
};

namespace {

int scaled(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

const Columns mixed { { QStringLiteral("Name"), 120, true, 0.6 }, { QStringLiteral("Mark"), 5, false, 0.0 },
    { QStringLiteral("Size"), 90, true, 0.0 }, { QStringLiteral("Place"), 101, true, 0.33 } };

VantTableColumnsInfo columnsInfo(const Columns& columns)
{
    VantTableColumnsInfo info;
    for (const auto& column : columns) {
        info.addColumn(column.title, column.width, column.resizable, column.ratio);
    }
    return info;
}

std::unique_ptr<VantTableWidget> shown(const Columns& columns, int width, int rows = 0)
{
    auto widget = std::make_unique<VantTableWidget>(columnsInfo(columns));
    widget->getTable()->setRowCount(rows);
    widget->resize(width, 300);
    widget->show();
    QCoreApplication::processEvents();
    return widget;
}

/**
 * The first column that the header does not show where the body has it, going by its sections and by the
 * colours in a picture; -1 if there is none.
 */
int misplaced(VantTableWidget& widget)
{
    const QHeaderView* header = widget.getHeader();
    const ResizeSignalTableWidget* table = widget.getTable();
    const QImage picture = widget.grab().toImage();
    const auto differs = [&](int x, const QColor& color) {
        const QPoint pixel = QPoint(x, 2) * displayscale::ratio();
        return picture.valid(pixel) && picture.pixelColor(pixel) != color;
    };
    for (int i = 0; i < table->columnCount(); ++i) {
        const int left = table->columnViewportPosition(i);
        const int width = table->columnWidth(i);
        const int above = header->sectionViewportPosition(i);
        if (header->viewport()->mapTo(&widget, QPoint(above, 0)).x() != left
            || header->sectionSize(i) != width
            || (width >= scaled(20) && (differs(left, Qt::green) || differs(left + width - 1, Qt::red)))) {
            return i;
        }
    }
    return -1;
}

} // namespace

void TableTest::initTestCase()
{
    const ThemeFolder theme;
    theme.initializeImages(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("kit.style"),
        "==component.table_header==\n"
        "QHeaderView::section { border: none; border-right: 4px solid #FF0000; background-color: #00FF00; }\n"
        "==component.table==\nQTableView { border: none; }\nQTableView::item:hover { background-color: "
        "#0000FF; }\n"
        "==component.scrollbar==\nQScrollBar:vertical { width: 12px; }") });
}

void TableTest::look()
{
    const auto widget = shown(mixed, scaled(640));
    QHeaderView* header = widget->getHeader();
    ResizeSignalTableWidget* table = widget->getTable();
    QCOMPARE(table->geometry(), QRect(0, scaled(30), scaled(640), 300 - scaled(30)));
    QCOMPARE(header->sectionSize(4), scaled(12));
    // The body's own header is hidden, but it is the one that a screen reader knows.
    for (int i = 0; i < mixed.size(); ++i) {
        for (const QAbstractItemModel* model : { header->model(), table->model() }) {
            QCOMPARE(model->headerData(i, Qt::Horizontal).toString(), mixed[i].title);
        }
    }

    // A press takes the whole row, and a double click opens no editor.
    table->setRowCount(2);
    const QPoint cell(scaled(20), scaled(40));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell);
    QCOMPARE(table->selectionModel()->selectedRows().value(0).row(), 1);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell);
    QVERIFY(!table->viewport()->findChild<QLineEdit*>());

    // The vertical bar keeps its room when it comes and goes.
    for (int rows : { 100, 1 }) {
        table->setRowCount(rows);
        QTRY_COMPARE(table->verticalScrollBar()->isVisible(), rows == 100);
        QCOMPARE(table->viewport()->width(), scaled(640) - scaled(12));
    }
}

void TableTest::widths()
{
    using Widths = QVector<int>;
    // With a body so wide, beside the vertical scroll bar.
    const auto widths = [](int bodyWidth, const Columns& columns) {
        const auto widget = shown(columns, bodyWidth + scaled(12));
        Widths sizes;
        for (int i = 0; i < columns.size(); ++i) {
            sizes << widget->getTable()->columnWidth(i);
        }
        return sizes;
    };
    const QString none;
    const int hundred = scaled(100);
    const Columns halves { { none, 100, true, 0.5 }, { none, 100, true, 0.5 }, { none, 100, false, 0.5 } };
    QCOMPARE(widths(scaled(500), halves), Widths({ scaled(200), scaled(200), hundred }));
    QCOMPARE(widths(scaled(50), halves), Widths({ hundred, hundred, hundred })); // the least that they need
    // Two times 33 are 82.5 pixels at 120 DPI; cut one by one they would be 82.
    QCOMPARE(widths(500, { { none, 33, false, 0 }, { none, 33, false, 0 }, { none, 1, true, 1.0 } }),
        Widths({ scaled(33), scaled(33), displayscale::pick(434, 417, 401, 368) }));
    QCOMPARE(widths(499, { { none, 101, true, 0.3 }, { none, 50, true, 0.69 }, { none, 33, false, 0 } }),
        Widths(
            { displayscale::pick(139, 137, 151, 202), displayscale::pick(321, 315, 309, 298), scaled(33) }));
}

void TableTest::staysAligned()
{
    const int most = std::numeric_limits<int>::max();
    const QString none;
    const Columns bad { { none, -50, false, 0.0 }, { none, -50, true, 0.5 }, { none, 0, true, -3.0 },
        { none, 40, true, std::numeric_limits<double>::quiet_NaN() }, { none, 40, true, 1e300 },
        { none, most, false, 0.0 }, { none, most, true, 0.1 } };
    Columns widerThanTheHeader(500, { QStringLiteral("Column"), 100, false, 0.0 });
    widerThanTheHeader[250] = { QStringLiteral("Share"), 30, true, 0.5 };
    for (const Columns& columns : { Columns(), mixed, bad, widerThanTheHeader }) {
        const auto widget = shown(columns, 640, 100);
        QScrollBar* bar = widget->getTable()->horizontalScrollBar();
        for (int width : { 333, 1200, 640 }) {
            widget->resize(width, 300);
            QCoreApplication::processEvents();
            for (int part : { 4, 0, 2 }) {
                bar->setValue(static_cast<int>(qint64(bar->maximum()) * part / 4));
                QCOMPARE(misplaced(*widget), -1);
            }
        }
    }
}

void TableTest::drag()
{
    // A column with a share, far below its least too, one with its own width, and what stands after the last.
    const QVector<QPair<int, int>> drags { { 0, 30 }, { 0, -400 }, { 2, -25 }, { 4, -5 } };
    for (const auto& [section, by] : drags) {
        const auto widget = shown(mixed, scaled(640));
        QHeaderView* header = widget->getHeader();
        const int before = header->sectionSize(section);
        const int other = header->sectionSize(3);
        const QPoint grip(header->sectionViewportPosition(section) + before - 2, header->height() / 2);
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, grip);
        for (int step = 1; step <= 5; ++step) {
            QMouseEvent move(QEvent::MouseMove, grip + QPoint(by * step / 5, 0), Qt::NoButton, Qt::LeftButton,
                Qt::NoModifier);
            QCoreApplication::sendEvent(header->viewport(), &move);
            QCOMPARE(misplaced(*widget), -1);
        }
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, grip + QPoint(by, 0));
        const int dragged = header->sectionSize(section);
        QCOMPARE(dragged != before, mixed.value(section).resizable);

        // The next resize takes a share column back, and no other.
        widget->resize(widget->width() + 1, 300);
        widget->resize(widget->width() - 1, 300);
        QTRY_COMPARE(header->sectionSize(section), section == 0 ? before : dragged);
        QCOMPARE(header->sectionSize(3), other);
        QCOMPARE(misplaced(*widget), -1);
    }
}

void TableTest::wheelOverTheHeader()
{
    const auto widget = shown(mixed, scaled(200), 100);
    const QScrollBar* bar = widget->getTable()->horizontalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QWidget* over = widget->getHeader()->viewport();
    const auto turn = [over](const QPoint& angle) {
        QWheelEvent event(QPointF(5, 5), over->mapToGlobal(QPoint(5, 5)), QPoint(), angle, Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event); // others are not handed on to parents
        qApp->notify(over, &event);
    };
    for (int i = 0; i < 50; ++i) {
        turn(QPoint(-120, 0));
    }
    QCOMPARE(bar->value(), bar->maximum());
    QCOMPARE(misplaced(*widget), -1);
    turn(QPoint(0, -120));
    QVERIFY(widget->getTable()->verticalScrollBar()->value() > 0);
}

void TableTest::hoveredRow()
{
    const auto widget = shown(mixed, 640, 100);
    ResizeSignalTableWidget* table = widget->getTable();
    const auto hoveredRows = [table] {
        const QImage picture = table->viewport()->grab().toImage();
        QVector<int> rows;
        for (int cell = 0; cell < 200; ++cell) {
            const QModelIndex index = table->model()->index(cell / 2, cell % 2 * 3);
            const QPoint center = table->visualRect(index).center() * picture.devicePixelRatio();
            if (picture.valid(center) && picture.pixelColor(center) == QColor(Qt::blue)) {
                rows << index.row();
            }
        }
        return rows;
    };
    const auto send = [table](QEvent::Type type, const QPoint& position) {
        QHoverEvent event(type, position, QPointF());
        QCoreApplication::sendEvent(table, &event);
    };
    send(QEvent::HoverMove, { scaled(60), scaled(40) });
    QCOMPARE(hoveredRows(), QVector<int>({ 1, 1 }));
    table->verticalScrollBar()->setValue(scaled(28) * 2);
    QCOMPARE(hoveredRows(), QVector<int>({ 3, 3 }));
    widget->setEnabled(false);
    QCOMPARE(hoveredRows(), QVector<int>());
    widget->setEnabled(true);
    send(QEvent::HoverLeave, { -1, -1 });
    QCOMPARE(hoveredRows(), QVector<int>());
}

void TableTest::builtTwice()
{
    auto widget = shown(mixed, 500, 1);
    const QPointer<QTableWidget> table = widget->getTable();
    const QPointer<QAbstractItemModel> titles = widget->getHeader()->model();
    widget->initailze();
    QCOMPARE(widget->getTable()->rowCount(), 1);
    widget.reset();
    QVERIFY(!table && !titles);
}

QTEST_MAIN(TableTest)
#include "table-test.moc"
