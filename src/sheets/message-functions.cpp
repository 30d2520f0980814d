#include "sheets/message-functions.h"

#include "sheets/dress-button_p.h"
#include "sheets/vant-mask.h"
#include "style-manager/style-manager.h"

#include <QAbstractButton>

using vantkit::internal::dressButton;
using vantkit::internal::textOrString;

namespace {

struct Message
{
    QString title;
    QString text;
    QString informativeText;
};

int execOver(VantMessageSheet& sheet, const QWidget* parent)
{
    VantMask::createMask(&sheet, parent->window());
    return sheet.exec();
}

int execBox(const Message& message, QMessageBox::Icon icon, const char* styleKey,
    QMessageBox::StandardButtons buttons = QMessageBox::Ok, const MsgBoxCustomBtnText& texts = {})
{
    QMessageBox box;
    box.setIcon(icon);
    box.setWindowTitle(message.title);
    box.setText(message.text);
    box.setInformativeText(message.informativeText);
    box.setStandardButtons(buttons);
    box.setStyleSheet(getStyleSheet(styleKey, false));
    dressButton(box.button(QMessageBox::Ok), textOrString(texts.okText, "ok"), "component.apply_button");
    if (QAbstractButton* cancel = box.button(QMessageBox::Cancel)) {
        dressButton(cancel, textOrString(texts.cancelText, "cancel"), "component.cancel_button");
    }
    return box.exec();
}

} // namespace

void showInfoMsg(const QString& title, const QString& text, QWidget* parent)
{
    if (!parent) {
        execBox({ title, text, {} }, QMessageBox::Information, "component.info_message_box");
        return;
    }
    VantMessageSheet sheet(VantMessageSheet::Information, text, parent);
    execOver(sheet, parent);
}

void showWarningMsg(const QString& title, const QString& text, QWidget* parent)
{
    showWarningMsg(title, text, QString(), parent);
}

void showWarningMsg(
    const QString& title, const QString& text, const QString& informativeText, QWidget* parent)
{
    if (!parent) {
        execBox({ title, text, informativeText }, QMessageBox::Warning, "component.warning_message_box");
        return;
    }
    VantMessageSheet sheet(VantMessageSheet::Warning, text, informativeText, parent);
    execOver(sheet, parent);
}

int showConfirmMsg(const QString& title, const QString& text, QWidget* parent)
{
    return showConfirmMsgCustomBtn(title, text, MsgBoxCustomBtnText(), parent);
}

int showConfirmMsgCustomBtn(
    const QString& title, const QString& text, const MsgBoxCustomBtnText& customBtnText, QWidget* parent)
{
    if (!parent) {
        return execBox({ title, text, {} }, QMessageBox::Question, "component.confirm_message_box",
            QMessageBox::Ok | QMessageBox::Cancel, customBtnText);
    }
    VantMessageSheet sheet(VantMessageSheet::Question, text, customBtnText, parent);
    return execOver(sheet, parent);
}

void showUpgradingMsg(const QString& title, const QString& text, QWidget* parent)
{
    if (!parent) {
        execBox({ title, text, {} }, QMessageBox::Warning, "component.upgrading_message_box");
        return;
    }
    VantMessageSheet sheet(VantMessageSheet::Upgrading, text, parent);
    execOver(sheet, parent);
}
