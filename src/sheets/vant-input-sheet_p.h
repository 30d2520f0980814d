#pragma once

#include "sheets/modal-sheet_p.h"
#include "sheets/vant-input-sheet.h"

class VantInputSheetPrivate : public vantkit::internal::ModalSheet
{
    Q_OBJECT

public:
    VantInputSheetPrivate(VantInputSheet* inputSheet, QObject* parent);

    void initialize();
    void setupLayout();
    int getPreferredWidth();

    VantInputSheet* q;
    MessageLabel* textLabel; // child of the sheet
    QLineEdit* lineEdit; // child of the sheet

protected:
    void beginWaiting() override;
    bool takeKey(QKeyEvent* press) override;
};
