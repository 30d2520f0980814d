#include "sheets/modal-sheet_p.h"
#include "sheets/vant-sheet.h"
#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"
#include "utils/window-close-button.h"
#include "widgets/message-label.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>
#include <QTextDocumentFragment>

#include <limits>

namespace vantkit::internal {

ModalSheet::ModalSheet(VantSheet* modalSheet, QObject* parent)
    : QObject(parent)
    , sheet(modalSheet)
{
    sheet->installEventFilter(this);
}

void ModalSheet::setStandardButtons(QFlags<QMessageBox::StandardButton> buttons)
{
    buttonBox->setStandardButtons(QDialogButtonBox::StandardButtons(int(buttons)));
}

QAbstractButton* ModalSheet::button(QMessageBox::StandardButton which) const
{
    return buttonBox->button(QDialogButtonBox::StandardButton(which));
}

void ModalSheet::dressOkButton(const QString& text)
{
    QPushButton* ok = buttonBox->button(QDialogButtonBox::Ok);
    ok->setText(text);
    ok->setIcon(QIcon()); // that of the desktop, if it gives standard buttons one
    ok->setDefault(true);
    ok->setStyleSheet(getStyleSheet("component.apply_button", false));
}

void ModalSheet::dressDiscardButton(const QString& text)
{
    QPushButton* discard = buttonBox->button(QDialogButtonBox::Discard);
    discard->setText(text);
    discard->setIcon(QIcon()); // where the desktop gives standard buttons one, a waste bin
    discard->setStyleSheet(getStyleSheet("component.cancel_button", false));
}

void ModalSheet::connectButtons()
{
    connect(buttonBox, SIGNAL(clicked(QAbstractButton*)), sheet, SLOT(buttonClick(QAbstractButton*)),
        Qt::UniqueConnection);
}

void ModalSheet::fixWidth(int width)
{
    sheet->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum);
    sheet->setFixedWidth(qMax(0, designPixels(width)));
    sheet->updateGeometry();
    sheet->adjustSize();
}

void ModalSheet::setParagraph(MessageLabel* label, const QString& text, int lineHeight)
{
    const QString paragraph =
        QStringLiteral("<p style='line-height: %1px;'>").arg(lineHeight) + QStringLiteral("%1</p>");
    label->setText(DPIinfo::getInstance().getScaledStyleSheet(paragraph.arg(text)));
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Maximum);
    // Any width will do, and the height of a former text must not hold.
    label->setMinimumSize(1, 0);
    label->setMaximumHeight(QWIDGETSIZE_MAX);
    label->setAccessibleName(QTextDocumentFragment::fromHtml(text).toPlainText());
}

double ModalSheet::parentWidth() const
{
    // Without a parent, which a sheet is when its mask was deleted, there is nothing to be narrower than.
    const QWidget* parent = sheet->parentWidget();
    return parent ? parent->width() / DPIinfo::getInstance().getDPI() : std::numeric_limits<int>::max();
}

void ModalSheet::show()
{
    if (!opened) {
        formerFocus = sheet->window()->focusWidget();
    }
    opened = true;
    sheet->show();
    QAccessibleEvent event(sheet, QAccessible::DialogStart);
    QAccessible::updateAccessibility(&event);
}

void ModalSheet::greyCloseButton()
{
    greyedWindow = sheet->window();
    SHAPISetCloseButtonOfWindowEnable(sheet, false, &windowButtonState);
}

void ModalSheet::giveCloseButtonBack()
{
    if (greyedWindow) {
        SHAPISetCloseButtonOfWindowEnable(greyedWindow, true, &windowButtonState);
    }
    greyedWindow.clear();
}

void ModalSheet::watchWindow()
{
    leaveWindow();
    watchedWindow = sheet->window();
    watchedWindow->installEventFilter(sheet);
}

void ModalSheet::leaveWindow()
{
    if (watchedWindow) {
        watchedWindow->removeEventFilter(sheet);
    }
    watchedWindow.clear();
}

bool ModalSheet::isRunning() const
{
    return opened && loopOnStack;
}

int ModalSheet::runLoop(const std::function<void()>& closeWithNothing)
{
    dropLoop();
    if (!opened) {
        return closedWith; // on being shown
    }
    auto* loop = new QEventLoop(sheet);
    eventLoop = loop;
    loopOnStack = true;
    watchParent();

    const QPointer<ModalSheet> alive(this);
    const int result = loop->exec();
    if (!alive || eventLoop != loop) {
        delete loop; // let go by a dying sheet, or by a run that began inside this one
        return result;
    }
    loopOnStack = false;
    if (!opened) {
        return result;
    }
    closeWithNothing();
    return 0;
}

// A loop that still runs further down the stack is deleted there.
void ModalSheet::dropLoop()
{
    if (loopOnStack) {
        eventLoop->setParent(nullptr);
    } else {
        delete eventLoop;
    }
    eventLoop = nullptr;
    loopOnStack = false;
}

void ModalSheet::watchParent()
{
    if (watchedParent) {
        disconnect(watchedParent, SIGNAL(destroyed(QObject*)), this, SLOT(letGoOf(QObject*)));
    }
    watchedParent = sheet->parentWidget();
    if (watchedParent) {
        connect(watchedParent, SIGNAL(destroyed(QObject*)), this, SLOT(letGoOf(QObject*)));
    }
}

// The mask, or the window with it, is being deleted while its sheet, often an object on the stack, waits for
// an answer: the sheet must not be deleted as a child, and there is nothing left that could be answered.
void ModalSheet::letGoOf(QObject* dyingParent)
{
    if (isRunning() && sheet->parent() == dyingParent) {
        leaveWindow();
        giveCloseButtonBack();
        sheet->setParent(nullptr);
        eventLoop->exit(0);
    }
}

void ModalSheet::close(int ret, bool blocksCloseButton)
{
    if (blocksCloseButton) {
        giveCloseButtonBack();
    }
    if (eventLoop) {
        eventLoop->exit(ret);
    }
    leaveWindow();
    const bool hadFocus = opened && sheet->isAncestorOf(sheet->window()->focusWidget());
    sheet->hide();
    if (opened) {
        QAccessibleEvent event(sheet, QAccessible::DialogEnd);
        QAccessible::updateAccessibility(&event);
    }
    // Back to where the user was before, unless something else has taken the focus from the sheet.
    if (hadFocus && formerFocus && formerFocus->isVisible()) {
        formerFocus->setFocus(Qt::OtherFocusReason);
    }
    formerFocus.clear();
    opened = false;
    closedWith = ret;
}

void ModalSheet::abandon(bool blocksCloseButton)
{
    sheet->removeEventFilter(this);
    if (opened) {
        close(0, blocksCloseButton);
    }
    dropLoop();
}

bool ModalSheet::refuseClose(QEvent* event, bool blocksCloseButton)
{
    if (!blocksCloseButton || event->type() != QEvent::Close) {
        return false;
    }
    event->ignore();
    return true;
}

bool ModalSheet::pressButtonOf(int key)
{
    QDialogButtonBox::StandardButton which;
    switch (key) {
    case Qt::Key_Escape:
        which = QDialogButtonBox::Discard;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        which = QDialogButtonBox::Ok;
        break;
    default:
        return false;
    }
    if (QAbstractButton* pressed = buttonBox->button(which)) {
        pressed->click();
    }
    return true;
}

// A window lower than its sheet would squeeze it, and lay the buttons over the text.
void ModalSheet::keepContentWhole()
{
    if (QLayout* layout = sheet->layout()) {
        layout->activate();
        sheet->setMinimumHeight(layout->totalMinimumSize().height());
    }
}

// Moved into another mask while it is open, or, with what it lies in, into another window, where it shows
// again.
void ModalSheet::followWindow()
{
    if (watchedWindow && watchedWindow != sheet->window()) {
        watchWindow();
    }
    if (greyedWindow && greyedWindow != sheet->window()) {
        giveCloseButtonBack();
        greyCloseButton();
    }
    if (isRunning()) {
        watchParent();
    }
}

bool ModalSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == sheet && event->type() == QEvent::LayoutRequest) {
        keepContentWhole();
    }
    if (watched == sheet && opened
        && (event->type() == QEvent::ParentChange || event->type() == QEvent::Show)) {
        followWindow();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vantkit::internal
