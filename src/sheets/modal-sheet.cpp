#include "sheets/dress-button_p.h"
#include "sheets/modal-sheet_p.h"
#include "sheets/vant-sheet.h"
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

#include <algorithm>
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
    dressButton(ok, text, "component.apply_button");
    ok->setDefault(true);
}

void ModalSheet::dressDiscardButton(const QString& text)
{
    dressButton(buttonBox->button(QDialogButtonBox::Discard), text, "component.cancel_button");
}

void ModalSheet::connectButtons()
{
    connect(buttonBox,
        SIGNAL(clicked(QAbstractButton*)), sheet, SLOT(buttonClick(QAbstractButton*)), Qt::UniqueConnection);
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
    label->setMinimumSize(1, 0); // any width will do
    label->setMaximumHeight(QWIDGETSIZE_MAX);
    if (label->isVisible()) {
        label->fitHeight();
    }
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
    return opened && innermost && !innermost->answered;
}

int ModalSheet::runLoop(const std::function<void()>& closeWithNothing)
{
    if (!opened) {
        return closedWith; // on being shown
    }
    if (!innermost || eventLoop != innermost->loop) {
        delete eventLoop; // that of a run which is over
    }
    Run run;
    run.loop = new QEventLoop(sheet);
    run.outer = innermost;
    innermost = &run;
    eventLoop = run.loop;
    watchParent();

    const QPointer<ModalSheet> alive(this);
    run.loop->exec();
    if (!alive) {
        delete run.loop; // let go by the dying sheet
        return run.answer;
    }
    innermost = run.outer;
    watchParent();
    if (eventLoop != run.loop) {
        delete run.loop; // a run that began inside this one has left its own
    }
    if (!run.answered) {
        closeWithNothing();
    }
    return run.answer;
}

void ModalSheet::watchParent()
{
    if (watchedParent) {
        disconnect(watchedParent, SIGNAL(destroyed(QObject*)), this, SLOT(letGoOf(QObject*)));
    }
    watchedParent = innermost ? sheet->parentWidget() : nullptr;
    if (watchedParent) {
        connect(watchedParent, SIGNAL(destroyed(QObject*)), this, SLOT(letGoOf(QObject*)));
    }
}

// The mask, or the window with it, is being deleted while somebody waits in runLoop() for the sheet, often an
// object on the stack: it must not be deleted as a child, and if it has no answer yet, there is none to come.
void ModalSheet::letGoOf(QObject* dyingParent)
{
    if (sheet->parent() != dyingParent) {
        return;
    }
    hadFocus = holdsFocus();
    leaveWindow();
    giveCloseButtonBack();
    sheet->setParent(nullptr);
    if (isRunning()) {
        innermost->loop->exit(0);
    }
}

void ModalSheet::close(int ret, bool blocksCloseButton)
{
    if (blocksCloseButton) {
        giveCloseButtonBack();
    }
    // A sheet that was shown again after its answer has nobody waiting.
    if (innermost && (!innermost->answered || !opened)) {
        innermost->answered = true;
        innermost->answer = ret;
    }
    if (eventLoop) {
        eventLoop->exit(ret);
    }
    leaveWindow();
    hadFocus = hadFocus || holdsFocus();
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
    hadFocus = false;
    opened = false;
    closedWith = ret;
}

bool ModalSheet::holdsFocus() const
{
    return opened && sheet->isAncestorOf(sheet->window()->focusWidget());
}

void ModalSheet::abandon()
{
    sheet->removeEventFilter(this);
    formerFocus.clear(); // may be going the same way
    if (opened) {
        close(0, true);
    }
    for (Run* run = innermost; run; run = run->outer) {
        run->loop->setParent(nullptr); // deleted where it runs
    }
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
    auto which = QDialogButtonBox::NoButton;
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
    watchParent();
}

// Everything that a key could do in the window is taken from it, but for what belongs to the sheet.
bool ModalSheet::blockShortcut(const QObject* watched, QEvent* event) const
{
    if (event->type() != QEvent::ShortcutOverride || watched != sheet->window() || !sheet->isVisible()) {
        return false;
    }
    const auto* press = static_cast<QKeyEvent*>(event);
    const QKeySequence keys(press->key() | int(press->modifiers()));
    const QList<QAbstractButton*> buttons = buttonBox->buttons();
    const bool own = std::any_of(buttons.cbegin(), buttons.cend(),
        [&keys](const QAbstractButton* candidate) { return candidate->shortcut() == keys; });
    event->setAccepted(!own);
    return true;
}

bool ModalSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == sheet && event->type() == QEvent::LayoutRequest) {
        keepContentWhole();
    }
    if (watched == sheet && (opened || innermost)
        && (event->type() == QEvent::ParentChange || event->type() == QEvent::Show)) {
        followWindow();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vantkit::internal
