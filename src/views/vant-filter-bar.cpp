#include "views/vant-filter-bar.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"
#include "views/bar-button-accessible_p.h"
#include "widgets/vant-icon-button.h"

#include <QKeyEvent>
#include <QStyle>

using vantkit::internal::designPixels;

VantFilterBar::VantFilterBar(QWidget* parent)
    : QLineEdit(parent)
    , searchButton(
          new VantIconButton(QStringLiteral("bt_search_dropdown"))) // a child of the bar from below on
{
    vantkit::internal::installBarButtonAccessibility();
    setAttribute(Qt::WA_MacShowFocusRect, false);

    searchButton->setFocusPolicy(Qt::NoFocus);
    searchButton->setParent(this);
    searchButton->setStyleSheet(getStyleSheet("component.filter_search_button", false));
    searchButton->setCursor(Qt::ArrowCursor);
    searchButton->setFixedSize(designPixels(34), designPixels(24));
    placeButton();

    setStyleSheet(
        getStyleSheet("component.lineedit", false) + getStyleSheet("component.filter_bar_padding", false));
    setFixedHeight(designPixels(28));
    connect(this, SIGNAL(returnPressed()), this, SLOT(slotKeywordChange()));
}

void VantFilterBar::setMenu(QMenu* menu)
{
    searchButton->setMenu(menu);
}

// Qt mirrors the room that the style sheet keeps for the button.
void VantFilterBar::placeButton()
{
    const QRect fromLeft(QPoint(designPixels(4), designPixels(2)), searchButton->size());
    searchButton->move(QStyle::visualRect(layoutDirection(), rect(), fromLeft).topLeft());
}

void VantFilterBar::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    placeButton();
}

void VantFilterBar::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        placeButton();
    }
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
