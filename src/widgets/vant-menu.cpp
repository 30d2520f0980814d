#include "widgets/vant-menu.h"

#include <QApplication>
#include <QDesktopWidget>

namespace {

int pulledInto(int position, int length, int first, int last)
{
    if (position < first) {
        return first;
    }
    return position + length > last ? last - length : position;
}

} // namespace

VantMenu::VantMenu(QWidget* parent)
    : QMenu(parent)
{ }

void VantMenu::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);

    const QDesktopWidget* desktop = QApplication::desktop();
    const int screen =
        desktop->isVirtualDesktop() ? desktop->screenNumber(pos()) : desktop->screenNumber(this);
    const QRect area = desktop->availableGeometry(screen);
    const QPoint position(pulledInto(x(), width(), area.left(), area.right()),
        pulledInto(y(), height(), area.top(), area.bottom()));
    if (position != pos()) {
        move(position);
    }
}
