#include "widgets/message-label.h"

MessageLabel::MessageLabel(QWidget* parent)
    : QLabel(parent)
{ }

void MessageLabel::resizeEvent(QResizeEvent* /*event*/)
{
    // A label counts its minimum height into the height that it needs, so the one fixed before has to go.
    setMinimumHeight(0);
    // Without a text it needs no height and answers with a negative number.
    setFixedHeight(qMax(0, heightForWidth(width())));
}
