#pragma once

#include "sheets/vant-sheet.h"
#include "vantkit-export.h"

#include <QMessageBox>

class QAbstractButton;
class QLineEdit;
class QPushButton;
class VantInputSheetPrivate;

/**
 * Asks for one line of text on a sheet inside a window: a prompt, a field, and the buttons Ok and Discard,
 * which cancels.
 *
 * Build it, hand it to VantMask::createMask, without which it lies in the corner of its parent like any
 * other child, then call exec() and read getContent(), or call showSheet() and wait for finished().
 * Both move the focus into the field, and Tab keeps it in the sheet. Any text is accepted; for a test
 * of the text use getLineEdit(). Unless setBlockWindowButton(false) was called, the window refuses to
 * close while the sheet is open.
 *
 * String keys "ok" and "cancel"; style keys "component.message_sheet_other", "component.lineedit",
 * "component.apply_button" and "component.cancel_button". The sheet is 480 design pixels wide, less in a
 * narrow parent.
 */
class VANTKIT_EXPORT VantInputSheet : public VantSheet
{
    Q_OBJECT

public:
    /** A sheet without a prompt. @p parent owns it until VantMask::createMask() hands it to the mask. */
    explicit VantInputSheet(QWidget* parent);
    /** The same with the prompt @p text, which is HTML. */
    VantInputSheet(const QString& text, QWidget* parent);
    ~VantInputSheet() override;

    /** Sets the prompt. It is HTML: escape it, and write `<br>` for a new line; numbers before "px" scale. */
    void setText(const QString& text);

    /** The button @p which, null if the sheet does not have it. The sheet keeps it. */
    QAbstractButton* button(QMessageBox::StandardButton which) const;
    /** Makes @p button the default; null is ignored. */
    void setDefaultButton(QPushButton* button);
    /**
     * Whether the window refuses to close while the sheet is open. It holds for the next opening or closing.
     */
    void setBlockWindowButton(bool block = true);

    /** The field; the sheet keeps it. */
    QLineEdit* getLineEdit();
    /** The text in the field, also after the sheet was closed, however it was. */
    QString getContent();

    /** Shows the sheet without waiting; finished() tells how it was closed. */
    void showSheet() override;

    /**
     * Shows the sheet and waits for the answer: QMessageBox::Ok, QMessageBox::Discard, or what done() was
     * called with.
     *
     * 0 if the sheet, its mask or its window was deleted or the application was quit meanwhile, and for a
     * sheet that is being waited for already.
     */
    int exec();

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /** Closes the sheet, lets exec() return @p ret, and emits finished(). */
    void done(int ret);
    /** done(0). */
    void quit();
    /** done() with the QMessageBox::StandardButton that @p which is; 0 if it is none of the sheet's. */
    void buttonClick(QAbstractButton* which);

protected:
    bool focusNextPrevChild(bool next) override;

private:
    VantInputSheetPrivate* d;
};
