#include "widgets/mouse-filters.h"

#include <QEvent>

bool MouseButtonFilter::eventFilter(QObject* /*watched*/, QEvent* event)
{
    return event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease
        || event->type() == QEvent::MouseButtonDblClick;
}

bool MouseReleaseFilter::eventFilter(QObject* /*watched*/, QEvent* event)
{
    return event->type() == QEvent::MouseButtonRelease;
}
