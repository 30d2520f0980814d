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

    void done(int ret) override;

    /** The widgets among which the focus may move, as they are now. */
    QList<QWidget*> focusWidgets() const;

    VantMessageSheet* q;
    MessageLabel* textLabel; // child of the sheet
    MessageLabel* informativeLabel = nullptr; // child of the sheet, built on demand
    QLabel* iconLabel; // child of the sheet
    VantMessageSheet::MessageType type = VantMessageSheet::Processing;
    QPointer<QWidget> firstFocusWidget;
    QPointer<QWidget> lastFocusWidget;

protected:
    void beginWaiting() override;
    bool takeKey(QKeyEvent* press) override;

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
