#pragma once

#include "vantkit-export.h"

#include <QMessageBox>
#include <QTimer>

/**
 * A message box whose Ok button counts seconds down and presses the default button when they are over.
 *
 * Text, icon and exec() are those of QMessageBox. The second button is QMessageBox::Discard. The count begins
 * when the box shows, and one second less is shown from then on. String keys "ok" and "cancel"; style keys
 * "component.info_message_box", "component.apply_button" and "component.cancel_button".
 */
class VANTKIT_EXPORT VantCountdownMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    /** A box that counts @p seconds down. With less than 1, the button is pressed as the box shows. */
    explicit VantCountdownMessageBox(int seconds, QWidget* parent = nullptr);

    /** Writes the seconds that are left on the Ok button. */
    void updateButtonText();

protected:
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void slotTick();

private:
    QTimer timer;
    int countdown;
};
