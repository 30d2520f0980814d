#include "sheets/vant-countdown-message-box.h"

#include "sheets/dress-button_p.h"
#include "style-manager/style-manager.h"

#include <QPushButton>

using vantkit::internal::dressButton;
using vantkit::internal::textOrString;

VantCountdownMessageBox::VantCountdownMessageBox(int seconds, QWidget* parent)
    : QMessageBox(parent)
    , countdown(seconds)
{
    connect(&timer, SIGNAL(timeout()), this, SLOT(slotTick()));
    timer.setInterval(1000);
    setStandardButtons(QMessageBox::Ok | QMessageBox::Discard);
    // Under a parent with a style sheet, the icon of a box that is not polished yet would come from that one.
    ensurePolished();
    setStyleSheet(getStyleSheet("component.info_message_box", false));
    dressButton(button(QMessageBox::Ok), QString(), "component.apply_button");
    dressButton(button(QMessageBox::Discard), textOrString(QString(), "cancel"), "component.cancel_button");
    setDefaultButton(QMessageBox::Ok);
    updateButtonText();
}

void VantCountdownMessageBox::updateButtonText()
{
    if (QAbstractButton* ok = button(QMessageBox::Ok)) {
        const QString text = textOrString(QString(), "ok");
        ok->setText(QStringLiteral("%1(%2)").arg(text, QString::number(countdown)));
    }
}

void VantCountdownMessageBox::slotTick()
{
    --countdown;
    if (countdown >= 0) {
        updateButtonText();
        return;
    }
    timer.stop();
    if (defaultButton()) {
        defaultButton()->animateClick(100);
    }
}

void VantCountdownMessageBox::showEvent(QShowEvent* event)
{
    QMessageBox::showEvent(event);
    slotTick();
    timer.start();
}
