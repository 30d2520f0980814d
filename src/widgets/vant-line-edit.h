#pragma once

#include "vantkit-export.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;

/**
 * A text field between two labels, with a place for a test of the text and an error look.
 *
 * The inner widgets are there to be used: texts, echo mode, placeholder and so on are set on them. The field
 * takes the focus that the widget is given, and is the buddy of the label before it: in that label's text
 * "&" marks the key that leads to the field, and "&&" stands for an ampersand.
 *
 * The widget never tests by itself: call validate(), judge the answer, and call setError(). Style keys
 * "component.lineedit" for the field, whose error look is selected by the dynamic property "error", and
 * "component.lineedit_label" for the labels.
 */
class VANTKIT_EXPORT VantLineEdit : public QWidget
{
    Q_OBJECT

public:
    /** An empty field between empty labels, which take no room. */
    explicit VantLineEdit(QWidget* parent = nullptr);

    /** The margins in design pixels; all 0 at the start. */
    void setMargins(int left, int top, int right, int bottom);

    /** The spacing in design pixels; 0 at the start. */
    void setSpacing(int spacing);

    /** Sets the test that validate() makes; null removes it. */
    void setValidator(bool (*test)(const QString&));

    /** What the test says of the present text; true without a test. Changes nothing. */
    bool validate();

    /** Shows or removes the error look. It stays until the next call: typing does not remove it. */
    void setError(bool error);

    /** The label before the field. This widget keeps it. */
    QLabel* getPreLabel();

    /** The label behind the field. This widget keeps it. */
    QLabel* getPostLabel();

    /** The field. This widget keeps it. */
    QLineEdit* getLineEdit();

    /** The text in the field. */
    QString getEditText() const;

private:
    QHBoxLayout* m_layout;
    QLabel* preLabel;
    QLabel* postLabel;
    QLineEdit* lineEdit;
    bool (*validator)(const QString&) = nullptr;
};
