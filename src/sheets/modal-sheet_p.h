#pragma once

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <functional>

class MessageLabel;
class QEventLoop;
class VantSheet;

namespace vantkit::internal {

/**
 * What the sheets share to be modal without being dialogs: the two buttons, the refusal to close the window,
 * the keys that press a button, and a nested event loop that bears the death of the sheet, the mask and the
 * window.
 *
 * A child of the sheet.
 */
class ModalSheet : public QObject
{
    Q_OBJECT

public:
    ModalSheet(VantSheet* modalSheet, QObject* parent);

    void setStandardButtons(QFlags<QMessageBox::StandardButton> buttons);
    QAbstractButton* button(QMessageBox::StandardButton which) const;

    /** Gives the Ok button its text and its look, and makes it the default. */
    void dressOkButton(const QString& text);
    /** Gives the Discard button, which cancels, its text and its look. */
    void dressDiscardButton(const QString& text);

    /** Sends clicks of the buttons to the sheet's slot buttonClick(QAbstractButton*), once each. */
    void connectButtons();

    /** Gives the sheet its policies and @p width design pixels, and the height that its layout asks for. */
    void fixWidth(int width);

    /** Sets @p text as a paragraph of @p lineHeight design pixels a line, wrapped at any width. */
    void setParagraph(MessageLabel* label, const QString& text, int lineHeight);

    /** The width in design pixels of the widget that the sheet lies in. */
    double parentWidth() const;

    // The steps of opening, in the order in which each sheet calls them.

    /** Shows the sheet. */
    void show();
    /** Makes the close button of the window unavailable until close(). */
    void greyCloseButton();
    /** Lets the sheet see the events of its window first. */
    void watchWindow();
    bool isRunning() const;
    /**
     * Waits until close() was called, and returns what it was called with; 0 if the sheet was deleted first.
     * If the loop ends in another way, @p closeWithNothing is called and 0 returned.
     */
    int runLoop(const std::function<void()>& closeWithNothing);

    /** Ends the loop with @p ret, leaves the window alone and hides the sheet; the sheet emits finished()
     * then. */
    void close(int ret, bool blocksCloseButton);

    /** What is left to do when the sheet is deleted, open or not. The sheet's destructor calls it. */
    void abandon();

    /** Whether @p event asks for a closing that is refused. */
    static bool refuseClose(QEvent* event, bool blocksCloseButton);

    /** Keeps the shortcuts of the window from firing: true if @p event asks whether one of them may. */
    bool blockShortcut(const QObject* watched, QEvent* event) const;

    /** Presses the button that @p key stands for; false if it stands for none. */
    bool pressButtonOf(int key);

    bool eventFilter(QObject* watched, QEvent* event) override;

    QDialogButtonBox* buttonBox = nullptr; // child of the sheet, made behind what stands above it
    QEventLoop* eventLoop = nullptr; // child of the sheet; the loop of the current or last run
    void* windowButtonState = nullptr;

private Q_SLOTS:
    void letGoOf(QObject* dyingParent);

private:
    void leaveWindow();
    void followWindow();
    void giveCloseButtonBack();
    void watchParent();
    void keepContentWhole();
    bool holdsFocus() const;

    /** One runLoop() on the stack. Each but the innermost was answered before the next began. */
    struct Run
    {
        QEventLoop* loop = nullptr;
        Run* outer = nullptr;
        bool answered = false;
        int answer = 0;
    };

    VantSheet* sheet;
    QPointer<QWidget> watchedParent;
    QPointer<QWidget> watchedWindow;
    QPointer<QWidget> greyedWindow;
    QPointer<QWidget> formerFocus;
    Run* innermost = nullptr;
    bool opened = false;
    bool hadFocus = false;
    int closedWith = 0;
};

} // namespace vantkit::internal
