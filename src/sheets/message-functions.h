#pragma once

#include "sheets/vant-message-sheet.h"
#include "vantkit-export.h"

#include <QString>

class QWidget;

/** @file
 * Messages with one call. Each waits until the user has answered, while the application goes on running.
 *
 * With a parent, the message is a VantMessageSheet in the parent's window. Without one it is a QMessageBox
 * with the string keys "ok" and "cancel", the style keys "component.apply_button" and
 * "component.cancel_button" on its buttons and the style key told at each function. The title is shown by the
 * QMessageBox only.
 *
 * Texts are HTML: escape what is not meant as such, and write `<br>` for a new line. On a sheet every number
 * before "px" is scaled with the display, in words too. A QMessageBox takes a text without any tag for plain.
 * Titles and the texts of buttons are plain.
 */

/** Tells something in the HTML @p text. Style key "component.info_message_box". */
VANTKIT_EXPORT void showInfoMsg(const QString& title, const QString& text, QWidget* parent = nullptr);

/** Warns with the HTML @p text. Style key "component.warning_message_box". */
VANTKIT_EXPORT void showWarningMsg(const QString& title, const QString& text, QWidget* parent = nullptr);

/**
 * Warns with the HTML @p text, and with @p informativeText, HTML too, below it. Style key
 * "component.warning_message_box".
 */
VANTKIT_EXPORT void showWarningMsg(
    const QString& title, const QString& text, const QString& informativeText, QWidget* parent = nullptr);

/**
 * Asks with the HTML @p text. Style key "component.confirm_message_box".
 *
 * The result is QMessageBox::Ok, or for the second button and Esc QMessageBox::Discard with a parent and
 * QMessageBox::Cancel without one; 0 if the window was deleted meanwhile. Compare it with QMessageBox::Ok.
 */
VANTKIT_EXPORT int showConfirmMsg(const QString& title, const QString& text, QWidget* parent = nullptr);

/** Asks with the HTML @p text, and plain texts of one's own on the buttons. See showConfirmMsg. */
VANTKIT_EXPORT int showConfirmMsgCustomBtn(const QString& title, const QString& text,
    const MsgBoxCustomBtnText& customBtnText, QWidget* parent = nullptr);

/**
 * Tells of a new version in the HTML @p text; with a parent, its Ok button reads "wizard_client_upgrade".
 * Style key "component.upgrading_message_box".
 */
VANTKIT_EXPORT void showUpgradingMsg(const QString& title, const QString& text, QWidget* parent = nullptr);
