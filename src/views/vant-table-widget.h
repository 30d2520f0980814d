#pragma once

#include "vantkit-export.h"
#include "views/vant-table-columns-info.h"

#include <QSize>
#include <QTableWidget>
#include <QWidget>

class QHeaderView;
class QScrollArea;
class QVBoxLayout;

/**
 * The body of a VantTableWidget: a table that tells its new size before it acts on it.
 *
 * A scroll area gets its resize events for the room that its contents have, so the scroll bars and the frame
 * are not part of the size.
 */
class VANTKIT_EXPORT ResizeSignalTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    /** A table of empty cells without a parent: the caller gives it one. */
    ResizeSignalTableWidget(int rows, int columns);

Q_SIGNALS:
    /** The rows have got a room of @p size, and are not laid out for it yet. */
    void sigResized(QSize size);

protected:
    void resizeEvent(QResizeEvent* event) override;
};

/**
 * A themed table whose column header stands above the scrolling body.
 *
 * The columns are described up front and stay for the life of the widget. Some keep their width, others share
 * what is left of the body's width and follow each of its resizes; see VantTableColumnsInfo. The header ends
 * in a filler section, 12 design pixels wide, that the body does not have; it stands over the room of the
 * vertical scroll bar. The body scrolls by pixels, takes whole rows as selection, offers no editing, and its
 * vertical scroll bar is seen only while there is something to scroll.
 *
 * @code
 * VantTableColumnsInfo columns;
 * columns.addColumn("Name", 160, true, 0.6);
 * columns.addColumn("Place", 120, true, 0.36);
 * columns.addColumn("Size", 90, false, 0.0);
 * auto* tasks = new VantTableWidget(columns, this);
 * tasks->getTable()->insertRow(0);
 * tasks->getTable()->setItem(0, 0, new QTableWidgetItem("Photos"));
 * @endcode
 *
 * Style keys: "component.table_header" for the header, "component.table" and "component.scrollbar" for the
 * body. The body's style sheet should give it no border, since the header has none either.
 */
class VANTKIT_EXPORT VantTableWidget : public QWidget
{
    Q_OBJECT

public:
    /** Makes the table with a copy of @p columns, which may be none. */
    explicit VantTableWidget(const VantTableColumnsInfo& columns, QWidget* parent = nullptr);
    ~VantTableWidget() override;

    /** Builds the widget. The constructor does it; further calls do nothing. */
    void initailze();

    /**
     * The body, for filling in rows and items. It belongs to this widget.
     *
     * The header does not follow column widths that are set here; set those on getHeader().
     */
    ResizeSignalTableWidget* getTable();

    /**
     * The visible header. It belongs to this widget. Section i is column i of the body and hands each new
     * size to it; the last section is the filler.
     */
    QHeaderView* getHeader();

public Q_SLOTS:
    /** Gives column @p index of the body the width @p new_size, in pixels. */
    void slotSectionResized(int index, int old_size, int new_size);

    /** Shows the body's vertical scroll bar, or hides it if @p max is 0. */
    void slotVerticalScrollRangeChanged(int min, int max);

    /**
     * Gives each share column its width in @p size, in pixels, the body's room for rows.
     *
     * The free width is that of @p size less the declared widths of the other columns, dragged or not. A
     * share column gets its ratio of it, but not less than its declared width.
     */
    void slotTableResized(QSize size);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void slotScrolledPastHeader();

private:
    void makeHeader();
    void allowNarrowSections();
    void makeColumns();
    void makeFillerSection();
    void dressTable();
    void layOut();
    void connectParts();

    VantTableColumnsInfo columns;
    QScrollArea* headerArea = nullptr;
    QHeaderView* header = nullptr;
    QTableWidget* headerTable = nullptr;
    ResizeSignalTableWidget* table = nullptr;
    QVBoxLayout* mainLayout = nullptr;
};
