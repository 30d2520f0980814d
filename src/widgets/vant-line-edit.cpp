#include "widgets/vant-line-edit.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QVariant>

using vantkit::internal::designPixels;

VantLineEdit::VantLineEdit(QWidget* parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
    , preLabel(new QLabel) // the layout adopts all three
    , postLabel(new QLabel)
    , lineEdit(new QLineEdit)
{
    preLabel->setStyleSheet(getStyleSheet("component.lineedit_label", false));
    lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    postLabel->setStyleSheet(preLabel->styleSheet());
    for (QLabel* label : { preLabel, postLabel }) {
        // One that never had a text keeps room for a letter.
        label->setText(QStringLiteral(" "));
        label->setText(QString());
    }
    preLabel->setBuddy(lineEdit);
    setFocusProxy(lineEdit);

    m_layout->setAlignment(Qt::AlignLeft);
    setSpacing(0);
    setMargins(0, 0, 0, 0);
    m_layout->addWidget(preLabel);
    m_layout->addWidget(lineEdit);
    m_layout->addWidget(postLabel);
}

void VantLineEdit::setMargins(int left, int top, int right, int bottom)
{
    m_layout->setContentsMargins(
        designPixels(left), designPixels(top), designPixels(right), designPixels(bottom));
}

void VantLineEdit::setSpacing(int spacing)
{
    m_layout->setSpacing(designPixels(spacing));
}

void VantLineEdit::setValidator(bool (*test)(const QString&))
{
    validator = test;
}

bool VantLineEdit::validate()
{
    return !validator || validator(lineEdit->text());
}

void VantLineEdit::setError(bool error)
{
    lineEdit->setProperty("error", error);
    lineEdit->style()->polish(lineEdit);
    lineEdit->update();
}

QLabel* VantLineEdit::getPreLabel()
{
    return preLabel;
}

QLabel* VantLineEdit::getPostLabel()
{
    return postLabel;
}

QLineEdit* VantLineEdit::getLineEdit()
{
    return lineEdit;
}

QString VantLineEdit::getEditText() const
{
    return lineEdit->text();
}
