#pragma once

#include "vantkit-export.h"

#include <QObject>

/**
 * What a VantPagingBar shows: how many rows a page has, how many items there are, and which page is current.
 *
 * It holds the three numbers as they are set, without a check and without telling anybody: a bar shows a
 * change when VantPagingBar::setPage or VantPagingBar::setItemCount is called next.
 */
class VANTKIT_EXPORT VantPagingModel : public QObject
{
    Q_OBJECT

public:
    /** An empty list at page 1, with @p rowLimit items on a page, which has to be positive. */
    explicit VantPagingModel(int rowLimit, QObject* parent = nullptr);

    /** The items on one page. */
    int rowLimit() const;
    /** Sets the items on one page. The current page stays the one of this number. */
    void setRowLimit(int rowLimit);

    /** The items in the whole list. */
    int itemCount() const;
    /** Sets the items in the whole list. The current page stays, even if the list ends before it. */
    void setItemCount(int itemCount);

    /** The current page, counted from 1. */
    int nowPage() const;
    /** Makes @p nowPage the current page, whether there is one or not. */
    void setNowPage(int nowPage);

    /** The pages that all items fill; 1 for an empty list and for a row limit that is not positive. */
    int pageCount() const;

    /**
     * The index of the first item of the current page, counted from 0. For a page outside the list it is
     * outside too, and stops at the ends of int.
     */
    int startItem() const;

private:
    int m_rowLimit;
    int m_itemCount = 0;
    int m_nowPage = 1;
};
