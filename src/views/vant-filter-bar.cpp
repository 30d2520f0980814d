#include "views/vant-filter-bar.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"
#include "widgets/vant-icon-button.h"

#include <QKeyEvent>

using vantkit::internal::designPixels;

VantFilterBar::VantFilterBar(QWidget* parent)
    : QLineEdit(parent)
    , searchButton(
          new VantIconButton(QStringLiteral("bt_search_dropdown"))) // a child of the bar from below on
{
    setAttribute(Qt::WA_MacShowFocusRect, false);

    searchButton->setFocusPolicy(Qt::NoFocus);
    searchButton->setParent(this);
    searchButton->setStyleSheet(getStyleSheet("component.filter_search_button", false));
    searchButton->move(designPixels(4), designPixels(2));
    searchButton->setCursor(Qt::ArrowCursor);
    searchButton->setFixedSize(designPixels(34), designPixels(24));

    setStyleSheet(
        getStyleSheet("component.lineedit", false) + getStyleSheet("component.filter_bar_padding", false));
    setFixedHeight(designPixels(28));
    connect(this, SIGNAL(returnPressed()), this, SLOT(slotKeywordChange()));
}

void VantFilterBar::setMenu(QMenu* menu)
{
    searchButton->setMenu(menu);
}

void VantFilterBar::slotKeywordChange()
{
    Q_EMIT sigKeywordChanged(text());
}

void VantFilterBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Down) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    if (searchButton->menu()) {
        searchButton->showMenu();
    }
}
