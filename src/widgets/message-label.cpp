#include "widgets/message-label.h"

MessageLabel::MessageLabel(QWidget* parent)
    : QLabel(parent)
{ }

void MessageLabel::resizeEvent(QResizeEvent* /*event*/)
{
    // A label without a text has no height for a width and answers with a negative number.
    setFixedHeight(qMax(0, heightForWidth(width())));
}
