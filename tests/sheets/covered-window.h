#pragma once

#include "support/themed-test.h"

/** An open window with a field and a button, to be covered by sheets. It notes what reaches it. */
class CoveredWindow : public QWidget
{
    Q_OBJECT

public:
    explicit CoveredWindow(const QSize& size = { 800, 600 });

    /** Shows the window and waits until it is active. */
    bool open();

    /** What a user still feels of sheets that are gone; empty if the window is as it was before them. */
    QString remains();

    /** What the user does, by way of the platform: Qt finds out whom it concerns. */
    void click(const QWidget* widget);
    void press(int key); // or a key sequence of one key

    VantMask* shownMask() const;
    bool hasCloseButton() const;

    QLineEdit* field;
    QPushButton* button;
    QList<int> keys; // key presses that came to the window itself
    int clicks = 0;
    int mousePresses = 0; // likewise

protected:
    void keyPressEvent(QKeyEvent* event) override { keys += event->key(); }

    void mousePressEvent(QMouseEvent* /*event*/) override { ++mousePresses; }
};

namespace sheets {

const int ok = QMessageBox::Ok;
const int discard = QMessageBox::Discard;

/** Rows for both modal sheets, in the column `input`, with each of the words in the column `way`. */
void addRows(std::initializer_list<const char*> words = { "each" });

/** A question, or an input sheet, with the text "Text" and a mask over @p window. */
QPointer<VantSheet> make(bool input, QWidget* window);

/** Calls @p call with the sheet as what it is, for what both have and their base does not. */
template <typename Call>
auto asItIs(VantSheet* sheet, Call call)
{
    auto* message = qobject_cast<VantMessageSheet*>(sheet);
    return message ? call(message) : call(static_cast<VantInputSheet*>(sheet));
}

int exec(VantSheet* sheet);
void done(VantSheet* sheet, int result);
QPushButton* button(VantSheet* sheet, int which);

/** The labels of the text and, on a message sheet, of the icon and the informative text. */
QList<QLabel*> labels(const QWidget* sheet);

/** Runs @p step on the next turn of the event loop. */
template <typename Step>
void soon(QObject* context, Step step)
{
    QMetaObject::invokeMethod(context, step, Qt::QueuedConnection);
}

} // namespace sheets
