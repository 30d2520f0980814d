#pragma once

#include "sheets/vant-sheet.h"
#include "vantkit-export.h"

#include <QMessageBox>

class QAbstractButton;
class QKeyEvent;
class QPushButton;
class VantMessageSheetPrivate;

/** The texts of the two buttons of a message. An empty text stands for the default one. */
struct MsgBoxCustomBtnText
{
    QString okText; ///< of QMessageBox::Ok, plain; by default the string "ok"
    QString cancelText; ///< of QMessageBox::Discard, plain; by default the string "cancel"
};

/**
 * The kit's message box: an icon, a text, an optional second text and buttons, on a sheet inside a window.
 *
 * Build it, hand it to VantMask::createMask, then call exec() to wait for the answer, or showSheet() or
 * showSheetWithBlock() to go on and close it with done() or quit() later. While it is open, no mouse event
 * reaches what lies below the mask, no shortcut and no key press the window itself, and unless
 * setBlockWindowButton(false) was called the window refuses to close.
 *
 * exec() moves the focus into the sheet, where Tab keeps it, and back when the sheet closes. showSheet() and
 * showSheetWithBlock() leave it where it is: what has it below the mask still gets its keys. Focus a button
 * of the sheet, or disable what lies below, if it must not.
 *
 * Without createMask the sheet is a child like any other, in the upper left corner of its parent, and may be
 * higher than its texts need: nothing is dimmed, and the mouse reaches everything beside it.
 *
 * | type | image | buttons |
 * |---|---|---|
 * | Processing | "app_img" | none |
 * | Information | "icon_information" | Ok |
 * | Warning | "icon_warning" | Ok |
 * | Question | "icon_question" | Ok, Discard |
 * | Upgrading | "icon_information" | Ok, reading "wizard_client_upgrade", and Discard |
 * | WarningQuestion | "icon_warning" | Ok, Discard |
 * | ProcessingMovie | a movie | none |
 *
 * The second button is QMessageBox::Discard, and cancels. String keys "ok", "cancel" and
 * "wizard_client_upgrade"; style keys "component.message_sheet_processing" for the two processing types and
 * "component.message_sheet_other" for the rest, "component.message_sheet_text",
 * "component.message_sheet_informative_text", "component.apply_button" and "component.cancel_button".
 *
 * The sheet is 540 design pixels wide, less in a narrow parent, and as high as its texts need.
 *
 * Both texts are HTML: escape what is not meant as such, write `<br>` for a new line, and mind that every
 * number before "px" is scaled with the display, in words too ("14px" reads "21px" at 144 DPI). The texts of
 * the buttons are plain.
 */
class VANTKIT_EXPORT VantMessageSheet : public VantSheet
{
    Q_OBJECT

public:
    /** What a sheet tells or asks, which decides its icon and its buttons: see the table above. */
    enum MessageType : int {
        Processing = 0, ///< work that goes on, with the icon of the application
        Information = 1, ///< something to know
        Warning = 2, ///< something that went wrong
        Question = 3, ///< something to decide
        Upgrading = 4, ///< a new version to be had
        WarningQuestion = 5, ///< something to decide that may do harm
        ProcessingMovie = 6 ///< work that goes on, with a movie
    };

    /**
     * A sheet without a text. @p parent owns it until VantMask::createMask() hands it to the mask, and is the
     * widget that it is no wider than.
     */
    VantMessageSheet(MessageType type, QWidget* parent);
    /** The same with @p text, which is HTML. */
    VantMessageSheet(MessageType type, const QString& text, QWidget* parent);
    /** The same with a second text below it, HTML too; an empty one is none. */
    VantMessageSheet(MessageType type, const QString& text, const QString& informativeText, QWidget* parent);
    /** The same with texts of one's own on the buttons that the type has. */
    VantMessageSheet(
        MessageType type, const QString& text, const MsgBoxCustomBtnText& customBtnText, QWidget* parent);
    /**
     * A sheet of the type ProcessingMovie with the movie in the file @p movieFile,
     * 32 design pixels in square. Without such a file there is no picture.
     */
    VantMessageSheet(const QString& text, const QString& movieFile, QWidget* parent);
    ~VantMessageSheet() override;

    /** Changes icon, buttons and texts of the buttons to those of @p type; custom texts are not kept. */
    void setMessageType(MessageType type);
    /** Sets the text, which is HTML. */
    void setText(const QString& text);
    /** Sets the second text, which is HTML; an empty one removes it. */
    void setInformativeText(const QString& text);
    /** Shows @p pixmap in place of the icon or the movie of the type; a null one leaves the place empty. */
    void setIcon(const QPixmap& pixmap);

    /** The button @p which, null if the sheet does not have it. The sheet keeps it. */
    QAbstractButton* button(QMessageBox::StandardButton which) const;
    /** Makes @p button the default; null is ignored. */
    void setDefaultButton(QPushButton* button);
    /**
     * Whether the window refuses to close while the sheet is open. It holds for the next opening or closing.
     */
    void setBlockWindowButton(bool block = true);

    /** Shows the sheet without waiting, and without touching focus and close button. */
    void showSheet() override;
    /** Like showSheet(), with the window's close button unavailable. */
    void showSheetWithBlock();

    /**
     * Shows the sheet and waits for the answer: QMessageBox::Ok, QMessageBox::Discard, or what done() was
     * called with.
     *
     * 0 if the sheet, its mask or its window was deleted or the application was quit meanwhile, and for a
     * sheet that is being waited for already.
     */
    int exec();

    /** Focuses a widget of the sheet when Tab or Backtab reached @p watched, the window. */
    void restrictedFocus(QObject* watched, QKeyEvent* event);
    /** Notes where the focus goes on when Tab leaves the last widget of the sheet. Part of showing it. */
    void markFirstFocusWidget();
    /** The same for Backtab and the first widget. */
    void markLastFocusWidget();

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /** Closes the sheet, lets exec() return @p ret, and emits finished(). */
    void done(int ret);
    /** done(0). */
    void quit();
    /** done() with the QMessageBox::StandardButton that @p which is; 0 if it is none of the sheet's. */
    void buttonClick(QAbstractButton* which);

protected:
    void showEvent(QShowEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    friend class VantMessageSheetPrivate;

    VantMessageSheet(const MsgBoxCustomBtnText& customBtnText, MessageType type, QWidget* parent);

    VantMessageSheetPrivate* d;
};
