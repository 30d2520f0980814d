#include "sheets/vant-countdown-message-box.h"

#include "style-manager/style-manager.h"
#include "utils/component-strings.h"

#include <QPushButton>

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
    button(QMessageBox::Ok)->setStyleSheet(getStyleSheet("component.apply_button", false));
    QAbstractButton* cancel = button(QMessageBox::Discard);
    cancel->setStyleSheet(getStyleSheet("component.cancel_button", false));
    cancel->setText(ComponentStrings::getInstance().getString(QStringLiteral("cancel")));
    for (QAbstractButton* own : buttons()) {
        own->setIcon(QIcon()); // those of the desktop, if it gives standard buttons any
    }
    setDefaultButton(QMessageBox::Ok);
    updateButtonText();
}

void VantCountdownMessageBox::updateButtonText()
{
    if (QAbstractButton* ok = button(QMessageBox::Ok)) {
        const QString text = ComponentStrings::getInstance().getString(QStringLiteral("ok"));
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
