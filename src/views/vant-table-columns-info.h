#pragma once

#include "vantkit-export.h"

#include <QString>

#include <vector>

/**
 * The columns of a VantTableWidget, described before the table is made.
 *
 * A column takes a share of the width that the fixed columns leave, if it is resizable and its ratio is not
 * 0. Every other one keeps its width, unless the user drags it.
 */
class VANTKIT_EXPORT VantTableColumnsInfo
{
public:
    /** One column, as addColumn() takes it. */
    struct ColumnInfo
    {
        /** The header's text. */
        QString title;
        /** The width in design pixels; of a share column, the least it gets. */
        int width;
        /** Whether the user can drag the column. */
        bool resizable;
        /** The share of the free width; 0 asks for none. */
        double ratio;
    };

    /** No columns yet. */
    VantTableColumnsInfo();

    /**
     * Appends a column and returns its index, which is 0 for the first one.
     *
     * @p title is the header's text, @p width the width in design pixels, which is the least width if the
     * column takes a share. @p resizable lets the user drag the column. @p ratio is its share of the free
     * width, 1.0 being all of it; 0 asks for no share, and a column that is not @p resizable gets none.
     * Ratios need not add up to 1: beyond it, the body scrolls sideways. Nothing is checked here; a width
     * that no column can have, below 0 or above about a million pixels, is passed over.
     */
    int addColumn(const QString& title, int width, bool resizable = true, double ratio = 0.0);

private:
    friend class VantTableWidget;

    std::vector<ColumnInfo> columns;
};
