#pragma once

#include "vantkit-export.h"

#include <QString>
#include <QWidget>

#include <vector>

class QHBoxLayout;
class QLabel;
class QSignalMapper;
class VantButton;
class VantIconButton;
class VantPagingModel;

/** One of the texts at the right end of a paging bar. */
struct PagingFooterInfo
{
    QString text; /**< plain or rich, as QLabel takes it */
    int width = 0; /**< in design pixels; 0 for a width that is not fixed */
};

/**
 * The strip under a list that is shown page by page: the first page and five pages back, five page numbers
 * of which the middle one is the current page, five pages on and the last page, then texts and a button to
 * refresh. It is no narrower than its numbers and texts need; screen readers are not offered the buttons that
 * stand for no page.
 *
 * The bar fetches nothing. On sigPageChanged() the application reads VantPagingModel::startItem and
 * VantPagingModel::rowLimit and fills its list. Call setItemCount() or reset() before the bar is shown: until
 * then its buttons are those of no page.
 *
 * Style keys "component.paging_bar_border", "component.select_paging_button",
 * "component.nonselect_paging_button", "component.paging_bar_label" and
 * "component.paging_bar_rightmost_label", besides those of its buttons. Image names "bt_pagebar_backend",
 * "bt_pagebar_back", "bt_pagebar_next", "bt_pagebar_nextend" and "bt_pagebar_refresh". String keys
 * "first_page", "prev_5_pages", "next_5_pages", "last_page" and "pagebar_refresh".
 */
class VANTKIT_EXPORT VantPagingBar : public QWidget
{
    Q_OBJECT

public:
    /**
     * A bar on @p model, which it sets to page 1 of an empty list; the row limit stays.
     *
     * @param model must not be null, stays the caller's and has to live as long as the bar.
     * @param parent owns the bar.
     */
    explicit VantPagingBar(VantPagingModel* model, QWidget* parent = nullptr);

    /**
     * Shows @p page and makes it the model's current one, without a signal. It is the caller's part
     * to name a page from 1 to the model's VantPagingModel::pageCount(); numbers of pages that do
     * not exist are left blank.
     */
    void setPage(int page);

    /**
     * Gives the model the number of items @p count and shows its current page again, without a signal. The
     * current page stays what it is, even if the list has become shorter than that.
     */
    void setItemCount(int count);

    /** Goes to page 1 and emits sigPageChanged(). */
    void reset();

    /**
     * Shows one text for each of @p infos, the first one at the right. A text whose width is 0 is as wide as
     * it needs to be, or as the text before it was at its place. Texts beyond those of @p infos go.
     */
    void setFooterInfos(const std::vector<PagingFooterInfo>& infos);

    /** Shows @p info as the only text. */
    void setFooterInfo(const PagingFooterInfo& info);

    /** Shows @p text as the only text, with the width that the first one had. */
    void setFooterText(const QString& text);

    /**
     * Hides or shows the button to refresh. Hide it before the first text is set: that text then takes the
     * look of the rightmost one.
     */
    void setRefreshButtonHidden(bool hidden);

Q_SIGNALS:
    /**
     * The user went to a page, or reset() was called. The model has the new page already. A slot that wants
     * the bar gone calls deleteLater().
     */
    void sigPageChanged();

    /** The user asks to have the list fetched again. A slot that wants the bar gone calls deleteLater(). */
    void sigRefresh();

private Q_SLOTS:
    void pageClick(int page);
    void next_5_page();
    void prev_5_page();
    void first_page();
    void last_page();

private:
    void createJumpButtons();
    void addBorder();
    void addJumpBackButtons();
    void addPageButtons();
    void addJumpOnButtons();
    void addFooter();
    void connectButtons();
    void goToPage(int page);
    QLabel* addFooterLabel();
    void dropLastFooterLabel();

    VantPagingModel* model;
    QHBoxLayout* barLayout = nullptr;
    QHBoxLayout* footerLayout = nullptr;
    VantIconButton* firstButton = nullptr;
    VantIconButton* prevButton = nullptr;
    VantIconButton* nextButton = nullptr;
    VantIconButton* lastButton = nullptr;
    VantButton* pageButtons[5] = {};
    std::vector<QLabel*> footerLabels;
    VantIconButton* refreshButton = nullptr;
    QSignalMapper* pageMapper = nullptr;
};
