#include "widgets/message-label.h"

#include <QTextDocument>
#include <QTextOption>

MessageLabel::MessageLabel(QWidget* parent)
    : QLabel(parent)
{ }

int MessageLabel::heightForWidth(int width) const
{
    const int height = QLabel::heightForWidth(width);
    return breakLongWords() ? QLabel::heightForWidth(width) : height;
}

// The label lays its document out with breaks between words only, anew after every change, so it has to have
// done that before the document is told otherwise. True if it was told just now.
bool MessageLabel::breakLongWords() const
{
    auto* document = wordWrap() ? findChild<QTextDocument*>() : nullptr;
    if (!document) {
        return false;
    }
    QTextOption option = document->defaultTextOption();
    if (option.wrapMode() == QTextOption::WrapAtWordBoundaryOrAnywhere) {
        return false;
    }
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document->setDefaultTextOption(option);
    return true;
}

void MessageLabel::resizeEvent(QResizeEvent* /*event*/)
{
    fitHeight();
}

void MessageLabel::fitHeight()
{
    // A label counts its minimum height into the height that it needs, so the one fixed before has to go.
    setMinimumHeight(0);
    // Without a text it needs no height and answers with a negative number.
    setFixedHeight(qMax(0, heightForWidth(width())));
}
