#pragma once

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <functional>

class MessageLabel;
class QKeyEvent;
class QPushButton;
class VantSheet;

namespace vantkit::internal {

/**
 * What the sheets share to be modal without being dialogs: the two buttons, the refusal to close
 * the window, the keys that press a button, and a nested event loop that bears the death of the
 * sheet, the mask and the window.
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
    /** Makes @p button the default; null is ignored. */
    static void setDefaultButton(QPushButton* button);

    /** Gives the Ok button its text and its look, and makes it the default. */
    void dressOkButton(const QString& text);
    /**
     * Gives the Discard button, which cancels, its text and its look, and lets Return press it as Space
     * does when it has the focus.
     */
    void dressDiscardButton(const QString& text);

    /** Sends clicks of the buttons to the sheet's slot buttonClick(QAbstractButton*), once each. */
    void connectButtons();

    /** Gives the sheet its policies and @p width design pixels, and the height that its layout asks for. */
    void fixWidth(int width);

    /** Sets @p text as a paragraph of @p lineHeight design pixels a line, wrapped at any width. */
    void setParagraph(MessageLabel* label, const QString& text, int lineHeight);

    /** The width in design pixels of the widget that the sheet lies in. */
    double parentWidth() const;

    void show();
    /** The same, with the window's close button unavailable, if that is wanted. */
    void showWithBlock();

    /**
     * Shows the sheet and waits until done() was called, and returns what it was called with.
     *
     * 0 if the sheet was deleted first, or, after done(0), if the loop ended in another way.
     */
    int exec();

    /** Closes the sheet, lets exec() return @p ret, and emits finished(). */
    virtual void done(int ret);
    void buttonClick(QAbstractButton* which);

    /** What is left to do when the sheet is deleted, open or not. The sheet's destructor calls it. */
    void abandon();

    /** Keeps what would close the window or be a key for it from it, as the sheet's eventFilter(). */
    bool filterEvent(QObject* watched, QEvent* event);

    /** Moves the focus by Tab, or by Backtab, around the open sheet. False for a sheet that does not show. */
    bool focusNextPrevChild(bool next);

    /** The first widget behind @p start in the focus chain, or before it, that @p accepts; null if none. */
    static QWidget* nextInFocusChain(
        QWidget* start, bool forward, const std::function<bool(const QWidget*)>& accepts);

    bool eventFilter(QObject* watched, QEvent* event) override;

    QDialogButtonBox* buttonBox = nullptr; // child of the sheet, made behind what stands above it
    void* windowButtonState = nullptr;
    bool blocksCloseButton = true;

protected:
    /** What a sheet does when exec() has shown it: it takes the focus. */
    virtual void beginWaiting() = 0;

    /** A key press that came to the window. True if it goes no further. */
    virtual bool takeKey(QKeyEvent* press) = 0;

    /** Presses the button that @p key stands for; false if it stands for none. */
    bool pressButtonOf(int key);

private Q_SLOTS:
    void letGoOf(QObject* dyingParent);

private:
    /** One call of exec(). */
    struct Wait;

    void close(int ret);
    void greyCloseButton();
    void giveCloseButtonBack();
    void watchWindow();
    void leaveWindow();
    void followWindow();
    void watchParent();
    void keepContentWhole();
    void loseFocus();
    QList<QAbstractButton*> buttonsOf(const QKeySequence& shortcut) const;
    bool answerMnemonic(const QKeySequence& shortcut);

    VantSheet* sheet;
    QPointer<QWidget> watchedWindow;
    QPointer<QWidget> greyedWindow;
    QPointer<QWidget> formerFocus;
    Wait* innermost = nullptr; // those around it have their answers
    bool opened = false;
};

} // namespace vantkit::internal
