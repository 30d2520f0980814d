#include "views/vant-paging-bar.h"

#include "style-manager/style-manager.h"
#include "utils/component-strings.h"
#include "utils/design-pixels_p.h"
#include "views/bar-button-accessible_p.h"
#include "views/vant-paging-model.h"
#include "widgets/vant-button.h"
#include "widgets/vant-icon-button.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalMapper>

using vantkit::internal::designPixels;
using vantkit::internal::standsForPage;

namespace {

constexpr int pageButtonCount = 5;
constexpr int currentIndex = 2; // of the page number that stands for the current page

// Made without a parent: the bar's layout adopts it.
VantIconButton* newJumpButton(const QString& imageName, const QString& textKey)
{
    auto* button = new VantIconButton(imageName);
    const QString text = ComponentStrings::getInstance().getString(textKey);
    button->setToolTip(text);
    button->setAccessibleName(text);
    return button;
}

VantButton* newPageButton(int index, QWidget* parent)
{
    auto* button = new VantButton(QString(), index == currentIndex ? 2 : 3);
    button->setParent(parent);
    button->setFixedHeight(designPixels(27));
    button->setMinimumWidth(designPixels(28));
    return button;
}

void addAligned(QHBoxLayout* layout, QWidget* widget, Qt::Alignment alignment)
{
    layout->addWidget(widget, 0);
    layout->setAlignment(widget, alignment);
}

/** The place of a page button, no narrower than its number; the button itself could be as narrow as any. */
class PagePlace : public QWidgetItem
{
public:
    using QWidgetItem::QWidgetItem;

    QSize minimumSize() const override { return sizeHint(); }
};

// To screen readers the button is there only while it stands for a page.
void announce(VantButton* button, bool exists)
{
    QAccessibleEvent event(button, exists ? QAccessible::ObjectShow : QAccessible::ObjectHide);
    QAccessible::updateAccessibility(&event);
}

void showPageNumber(VantButton* button, qint64 page, int pageCount)
{
    const bool exists = page > 0 && page <= pageCount;
    const bool existed = standsForPage(button);
    button->setText(exists ? QString::number(page) : QStringLiteral(" "));
    button->setEnabled(exists);
    if (exists != existed) {
        announce(button, exists);
    }
}

void setFooterLabel(QLabel* label, const PagingFooterInfo& info)
{
    label->setText(info.text);
    if (info.width != 0) {
        label->setFixedWidth(designPixels(info.width));
    }
}

} // namespace

VantPagingBar::VantPagingBar(VantPagingModel* pagingModel, QWidget* parent)
    : QWidget(parent)
    , model(pagingModel)
    , pageMapper(new QSignalMapper(this))
{
    model->setNowPage(1);
    model->setItemCount(0);

    vantkit::internal::installBarButtonAccessibility();
    createJumpButtons();
    addBorder();
    addJumpBackButtons();
    addPageButtons();
    addJumpOnButtons();
    addFooter();
    connectButtons();
}

void VantPagingBar::createJumpButtons()
{
    firstButton = newJumpButton(QStringLiteral("bt_pagebar_backend"), QStringLiteral("first_page"));
    prevButton = newJumpButton(QStringLiteral("bt_pagebar_back"), QStringLiteral("prev_5_pages"));
    lastButton = newJumpButton(QStringLiteral("bt_pagebar_nextend"), QStringLiteral("last_page"));
    nextButton = newJumpButton(QStringLiteral("bt_pagebar_next"), QStringLiteral("next_5_pages"));
}

void VantPagingBar::addBorder()
{
    auto* border = new QWidget; // the outer layout adopts it
    border->setObjectName(QStringLiteral("PAGINGBARBORDER"));
    border->setStyleSheet(getStyleSheet("component.paging_bar_border", false));
    border->setFixedHeight(designPixels(29));

    barLayout = new QHBoxLayout(border);
    barLayout->setSpacing(0);
    barLayout->setContentsMargins(0, 0, 0, 0);

    auto* outerLayout = new QHBoxLayout(this);
    outerLayout->setSpacing(0);
    outerLayout->setContentsMargins(0, 0, 0, 0);
    outerLayout->addWidget(border);
}

void VantPagingBar::addJumpBackButtons()
{
    barLayout->addSpacing(designPixels(50));
    addAligned(barLayout, firstButton, Qt::AlignLeft);
    addAligned(barLayout, prevButton, Qt::AlignLeft);
    barLayout->addStretch(0);
}

void VantPagingBar::addPageButtons()
{
    for (int i = 0; i < pageButtonCount; ++i) {
        if (i != 0) {
            barLayout->addSpacing(designPixels(4));
        }
        VantButton* button = newPageButton(i, barLayout->parentWidget());
        connect(button, SIGNAL(clicked()), pageMapper, SLOT(map()));
        barLayout->addItem(new PagePlace(button)); // the layout's
        barLayout->setAlignment(button, Qt::AlignHCenter);
        pageMapper->setMapping(button, i);
        pageButtons[i] = button;
    }
    barLayout->addStretch(0);
    pageButtons[currentIndex]->setText(QStringLiteral("1"));
    connect(pageMapper, SIGNAL(mapped(int)), this, SLOT(pageClick(int)));
}

void VantPagingBar::addJumpOnButtons()
{
    addAligned(barLayout, nextButton, Qt::AlignRight);
    addAligned(barLayout, lastButton, Qt::AlignRight);
}

void VantPagingBar::addFooter()
{
    refreshButton = new VantIconButton(QStringLiteral("bt_pagebar_refresh"));
    refreshButton->setAccessibleName(
        ComponentStrings::getInstance().getString(QStringLiteral("pagebar_refresh")));
    refreshButton->setFixedSize(designPixels(24), designPixels(24));

    footerLayout = new QHBoxLayout; // the bar's layout adopts it
    footerLayout->setDirection(QBoxLayout::RightToLeft);
    footerLayout->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    footerLayout->setContentsMargins(0, designPixels(2), 0, 0);
    footerLayout->addWidget(refreshButton, 0, Qt::AlignCenter);

    barLayout->addSpacing(designPixels(50));
    barLayout->addLayout(footerLayout, 0);
}

void VantPagingBar::connectButtons()
{
    connect(refreshButton, SIGNAL(clicked()), this, SIGNAL(sigRefresh()));
    connect(firstButton, SIGNAL(clicked()), this, SLOT(first_page()));
    connect(lastButton, SIGNAL(clicked()), this, SLOT(last_page()));
    connect(nextButton, SIGNAL(clicked()), this, SLOT(next_5_page()));
    connect(prevButton, SIGNAL(clicked()), this, SLOT(prev_5_page()));
}

// Sums of pages are made in 64 bits: any int may be shown as a page.
void VantPagingBar::setPage(int page)
{
    const int pageCount = model->pageCount();
    for (int i = 0; i < pageButtonCount; ++i) {
        showPageNumber(pageButtons[i], qint64(page) - currentIndex + i, pageCount);
    }
    nextButton->setDisabled(page >= pageCount);
    lastButton->setDisabled(page >= pageCount);
    prevButton->setDisabled(page == 1);
    firstButton->setDisabled(page == 1);
    model->setNowPage(page);
}

void VantPagingBar::setItemCount(int count)
{
    model->setItemCount(count);
    setPage(model->nowPage());
}

void VantPagingBar::reset()
{
    goToPage(1);
}

void VantPagingBar::goToPage(int page)
{
    setPage(page);
    Q_EMIT sigPageChanged();
}

void VantPagingBar::pageClick(int page)
{
    goToPage(pageButtons[page]->text().toInt());
}

void VantPagingBar::next_5_page()
{
    goToPage(static_cast<int>(qMin(qint64(model->nowPage()) + 5, qint64(model->pageCount()))));
}

void VantPagingBar::prev_5_page()
{
    goToPage(static_cast<int>(qMax(qint64(model->nowPage()) - 5, qint64(1))));
}

void VantPagingBar::first_page()
{
    reset();
}

void VantPagingBar::last_page()
{
    goToPage(model->pageCount());
}

void VantPagingBar::setFooterInfos(const std::vector<PagingFooterInfo>& infos)
{
    for (std::size_t i = 0; i < infos.size(); ++i) {
        setFooterLabel(i < footerLabels.size() ? footerLabels[i] : addFooterLabel(), infos[i]);
    }
    while (footerLabels.size() > infos.size()) {
        dropLastFooterLabel();
    }
}

void VantPagingBar::setFooterInfo(const PagingFooterInfo& info)
{
    setFooterInfos({ info });
}

void VantPagingBar::setFooterText(const QString& text)
{
    setFooterInfo({ text, 0 });
}

void VantPagingBar::setRefreshButtonHidden(bool hidden)
{
    refreshButton->setHidden(hidden);
}

QLabel* VantPagingBar::addFooterLabel()
{
    const bool rightmost = footerLabels.empty() && refreshButton->isHidden();
    auto* label = new QLabel; // the footer's layout adopts it
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setFixedHeight(designPixels(19));
    label->setStyleSheet(getStyleSheet(
        rightmost ? "component.paging_bar_rightmost_label" : "component.paging_bar_label", false));
    footerLabels.push_back(label);
    footerLayout->addWidget(label);
    return label;
}

// The label stays, hidden, a child of the border.
void VantPagingBar::dropLastFooterLabel()
{
    QLabel* label = footerLabels.back();
    label->hide();
    footerLayout->removeWidget(label);
    footerLabels.pop_back();
}
