#pragma once

#include "vantkit-export.h"

#include <QComboBox>
#include <QPointer>

class QStyledItemDelegate;

/**
 * A combo box with the kit's look. Style keys "component.combobox" and "component.scrollbar".
 *
 * In the template of "component.combobox" the place marker %1 stands for the rule of the padding left and
 * right, and %2 for the rule of the border.
 */
class VANTKIT_EXPORT VantComboBox : public QComboBox
{
    Q_OBJECT

public:
    /** A box without entries. */
    explicit VantComboBox(QWidget* parent = nullptr);
    ~VantComboBox() override;

private:
    QPointer<QStyledItemDelegate> listDelegate; // the view does not own it
};
