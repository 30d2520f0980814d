#include "widgets/mouse-filters.h"

#include <QEvent>

bool MouseButtonFilter::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool MouseReleaseFilter::eventFilter(QObject* watched, QEvent* event)
{
    return event->type() == QEvent::MouseButtonRelease || QObject::eventFilter(watched, event);
}
