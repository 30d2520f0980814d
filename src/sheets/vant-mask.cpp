#include "sheets/vant-mask.h"

#include "sheets/vant-mask_p.h"

#include <QEvent>
#include <QHBoxLayout>

VantMaskPrivate::VantMaskPrivate(VantMask* mask, QObject* parent)
    : QObject(parent)
    , q(mask)
{ }

void VantMaskPrivate::init(QWidget* content)
{
    auto* layout = new QHBoxLayout(q);
    QPalette palette = q->palette();
    palette.setBrush(QPalette::All, QPalette::Window, QBrush(color, Qt::SolidPattern));
    q->setPalette(palette);
    q->setAutoFillBackground(true);
    layout->addWidget(content);
    widget = content;
    q->resize();
}

VantMask::VantMask(QWidget* widget, QWidget* parent, QColor color)
    : QFrame(parent)
    , d(new VantMaskPrivate(this, this))
{
    hide(); // also when a window that does not show yet does so
    d->color = color;
    d->init(widget);
    widget->installEventFilter(this);
    setAttribute(Qt::WA_NoMousePropagation);
    setAcceptDrops(true);
    // A content that is deleted while it shows leaves nothing to close the mask.
    connect(widget, SIGNAL(destroyed()), this, SLOT(hide()));

    auto* filter = new ParentEventFilterWidget;
    filter->mask = this;
    filter->watchedParent = parent;
    filter->setParent(this);
    parent->installEventFilter(filter);
}

VantMask::~VantMask()
{
    // The content goes with the mask, and has nothing to hide then.
    if (d->widget) {
        d->widget->disconnect(this);
    }
}

QWidget* VantMask::createMask(QWidget* widget, QWidget* parent, QColor color)
{
    if (!widget) {
        return nullptr;
    }
    if (!parent) {
        parent = widget->parentWidget();
    }
    if (!parent) {
        return nullptr;
    }
    new VantMask(widget, parent, color); // the parent deletes it
    return widget;
}

void VantMask::resize()
{
    setFixedSize(window()->size());
}

bool VantMask::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != d->widget) {
        return QFrame::eventFilter(watched, event);
    }
    // A content that was moved out of the mask hides on its way, and shows without it.
    if (event->type() == QEvent::ShowToParent && isAncestorOf(d->widget)) {
        show();
        raise();
    } else if (event->type() == QEvent::HideToParent) {
        hide();
    }
    return QFrame::eventFilter(watched, event);
}

// A drag that the mask did not let in would be offered to the widgets below it; it may come in, and nothing
// can be dropped.
bool VantMask::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        event->setAccepted(event->type() == QEvent::DragEnter);
        return true;
    default:
        return QFrame::event(event);
    }
}

// It may have come into another window since it was shown last.
void VantMask::showEvent(QShowEvent* event)
{
    resize();
    QFrame::showEvent(event);
}

bool ParentEventFilterWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == watchedParent && event->type() == QEvent::Resize) {
        mask->resize();
    }
    return QObject::eventFilter(watched, event);
}
