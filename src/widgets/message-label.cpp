#include "widgets/message-label.h"

#include <QTextDocument>
#include <QTextOption>

MessageLabel::MessageLabel(QWidget* parent)
    : QLabel(parent)
{ }

int MessageLabel::heightForWidth(int width) const
{
    breakLongWords(width);
    return QLabel::heightForWidth(width);
}

// The label lays its document out with breaks between words only, anew after every change, so it has to have
// done that before the document is told otherwise.
void MessageLabel::breakLongWords(int width) const
{
    auto* document = wordWrap() ? findChild<QTextDocument*>() : nullptr;
    if (!document) {
        return;
    }
    QLabel::heightForWidth(width);
    QTextOption option = document->defaultTextOption();
    if (option.wrapMode() != QTextOption::WrapAtWordBoundaryOrAnywhere) {
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        document->setDefaultTextOption(option);
    }
}

void MessageLabel::resizeEvent(QResizeEvent* /*event*/)
{
    // A label counts its minimum height into the height that it needs, so the one fixed before has to go.
    setMinimumHeight(0);
    // Without a text it needs no height and answers with a negative number.
    setFixedHeight(qMax(0, heightForWidth(width())));
}

void MessageLabel::paintEvent(QPaintEvent* event)
{
    breakLongWords(width());
    QLabel::paintEvent(event);
}
