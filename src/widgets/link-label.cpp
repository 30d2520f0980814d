#include "widgets/link-label.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>

LinkLabel::LinkLabel(const QString& text, QLabel* parent)
    : QLabel(text, parent)
{ }

LinkLabel::~LinkLabel()
{
    giveCursorBack();
}

void LinkLabel::setHyperLink(const QString& link)
{
    hyperLink = link;
}

QString LinkLabel::getHyperLink()
{
    return hyperLink;
}

void LinkLabel::mousePressEvent(QMouseEvent* event)
{
    const QPointer<LinkLabel> self(this);
    Q_EMIT clicked();
    if (self) {
        QLabel::mousePressEvent(event);
    }
}

void LinkLabel::enterEvent(QEvent* event)
{
    if (isEnabled()) {
        QGuiApplication::setOverrideCursor(Qt::PointingHandCursor);
        overrideCursor = OverrideCursor::Set;
        setUnderlined(true);
    }
    QWidget::enterEvent(event);
}

void LinkLabel::leaveEvent(QEvent* event)
{
    if (isEnabled()) {
        if (overrideCursor != OverrideCursor::GivenBack) {
            QGuiApplication::restoreOverrideCursor();
        }
        overrideCursor = OverrideCursor::None;
        setUnderlined(false);
    }
    QWidget::leaveEvent(event);
}

void LinkLabel::changeEvent(QEvent* event)
{
    // A disabled label takes no notice of the pointer leaving, so it lets go of the cursor now.
    if (event->type() == QEvent::EnabledChange && !isEnabled() && overrideCursor == OverrideCursor::Set) {
        giveCursorBack();
        setUnderlined(false);
    }
    QLabel::changeEvent(event);
}

void LinkLabel::setUnderlined(bool underlined)
{
    QFont underlinedFont = font();
    underlinedFont.setUnderline(underlined);
    setFont(underlinedFont);
}

void LinkLabel::giveCursorBack()
{
    if (overrideCursor == OverrideCursor::Set) {
        QGuiApplication::restoreOverrideCursor();
        overrideCursor = OverrideCursor::GivenBack;
    }
}
