#pragma once

#include "sheets/modal-sheet_p.h"
#include "sheets/vant-message-sheet.h"

#include <QProxyStyle>

class QLabel;

class VantMessageSheetPrivate : public vantkit::internal::ModalSheet
{
    Q_OBJECT

public:
    VantMessageSheetPrivate(VantMessageSheet* messageSheet, QObject* parent);

    void initialize();
    void initialize(const MsgBoxCustomBtnText& customBtnText);
    void setupLayout();
    int getPreferredWidth();
    void setIcon(QMessageBox::Icon icon);
    void setIconPixmap(const QPixmap& pixmap);

    /** Finds the widgets among which the focus may move, as they are now. */
    void collectFocusWidgets();

    VantMessageSheet* q;
    MessageLabel* textLabel; // child of the sheet
    MessageLabel* informativeLabel = nullptr; // child of the sheet, built on demand
    QLabel* iconLabel; // child of the sheet
    VantMessageSheet::MessageType type = VantMessageSheet::Processing;
    QList<QWidget*> focusWidgets;
    QWidget* firstFocusWidget = nullptr;
    QWidget* lastFocusWidget = nullptr;

private:
    bool hasIcon() const;
};

/** Lays out the buttons of a dialog as on Windows on every system. */
class DialogButtonBoxStyle : public QProxyStyle
{
public:
    DialogButtonBoxStyle();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* returnData) const override;
};
