#include "sheets/vant-input-sheet.h"

#include "sheets/vant-input-sheet_p.h"
#include "style-manager/style-manager.h"
#include "utils/component-strings.h"
#include "utils/design-pixels_p.h"
#include "widgets/message-label.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using vantkit::internal::designPixels;

VantInputSheetPrivate::VantInputSheetPrivate(VantInputSheet* inputSheet, QObject* parent)
    : ModalSheet(inputSheet, parent)
    , q(inputSheet)
    , textLabel(new MessageLabel(q))
    , lineEdit(new QLineEdit(q))
{
    buttonBox = new QDialogButtonBox(q);
}

void VantInputSheetPrivate::initialize()
{
    setStandardButtons(QMessageBox::Ok | QMessageBox::Discard);
    dressOkButton(ComponentStrings::getInstance().getString(QStringLiteral("ok")));
    dressDiscardButton(ComponentStrings::getInstance().getString(QStringLiteral("cancel")));
    q->setStyleSheet(getStyleSheet("component.message_sheet_other", false));
    connectButtons();
    setupLayout();
}

void VantInputSheetPrivate::setupLayout()
{
    delete q->layout();
    auto* layout = new QVBoxLayout(q);
    lineEdit->setFixedHeight(designPixels(28));
    lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    layout->setContentsMargins(designPixels(10), designPixels(10), designPixels(10), designPixels(10));
    layout->setSpacing(0);
    layout->addWidget(textLabel);
    layout->addSpacing(designPixels(8));
    layout->addWidget(lineEdit);
    if (!buttonBox->buttons().isEmpty()) {
        layout->addSpacing(designPixels(24));
        layout->addWidget(buttonBox);
    }
    fixWidth(getPreferredWidth());
}

int VantInputSheetPrivate::getPreferredWidth()
{
    const double parent = parentWidth();
    return parent < 520 ? vantkit::internal::cutToInt(parent - 40) : 480;
}

void VantInputSheetPrivate::beginWaiting()
{
    q->setFocus(Qt::TabFocusReason);
    if (q->isVisible()) { // and was not closed by what saw the focus come
        lineEdit->setFocus(Qt::OtherFocusReason);
    }
}

bool VantInputSheetPrivate::takeKey(QKeyEvent* press)
{
    pressButtonOf(press->key());
    return true;
}

VantInputSheet::VantInputSheet(QWidget* parent)
    : VantSheet(parent)
    , d(new VantInputSheetPrivate(this, this))
{
    d->initialize();
}

VantInputSheet::VantInputSheet(const QString& text, QWidget* parent)
    : VantInputSheet(parent)
{
    setText(text);
}

VantInputSheet::~VantInputSheet()
{
    d->abandon();
}

void VantInputSheet::setText(const QString& text)
{
    d->setParagraph(d->textLabel, text, 20);
    d->textLabel->setAlignment(Qt::AlignTop);
    setAccessibleName(d->textLabel->accessibleName());
    d->lineEdit->setAccessibleName(d->textLabel->accessibleName());
    d->setupLayout();
}

QAbstractButton* VantInputSheet::button(QMessageBox::StandardButton which) const
{
    return d->button(which);
}

void VantInputSheet::setDefaultButton(QPushButton* button)
{
    vantkit::internal::ModalSheet::setDefaultButton(button);
}

void VantInputSheet::setBlockWindowButton(bool block)
{
    d->blocksCloseButton = block;
}

QLineEdit* VantInputSheet::getLineEdit()
{
    return d->lineEdit;
}

QString VantInputSheet::getContent()
{
    return d->lineEdit->text();
}

void VantInputSheet::showSheet()
{
    d->show();
    d->lineEdit->setFocus(Qt::OtherFocusReason);
}

int VantInputSheet::exec()
{
    return d->exec();
}

void VantInputSheet::done(int ret)
{
    d->done(ret);
}

void VantInputSheet::quit()
{
    done(0);
}

void VantInputSheet::buttonClick(QAbstractButton* which)
{
    d->buttonClick(which);
}

bool VantInputSheet::eventFilter(QObject* watched, QEvent* event)
{
    return d->filterEvent(watched, event) || VantSheet::eventFilter(watched, event);
}

bool VantInputSheet::focusNextPrevChild(bool next)
{
    return d->focusNextPrevChild(next) || VantSheet::focusNextPrevChild(next);
}
