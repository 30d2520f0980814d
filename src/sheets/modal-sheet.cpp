#include "sheets/dress-button_p.h"
#include "sheets/modal-sheet_p.h"
#include "sheets/vant-sheet.h"
#include "utils/design-pixels_p.h"
#include "utils/window-close-button.h"
#include "widgets/message-label.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>
#include <QShortcutEvent>
#include <QTextDocumentFragment>

#include <algorithm>
#include <limits>
#include <optional>

namespace vantkit::internal {

ModalSheet::ModalSheet(VantSheet* modalSheet, QObject* parent)
    : QObject(parent)
    , sheet(modalSheet)
{
    sheet->installEventFilter(this);
    watchParent();
}

void ModalSheet::setStandardButtons(QFlags<QMessageBox::StandardButton> buttons)
{
    buttonBox->setStandardButtons(QDialogButtonBox::StandardButtons(int(buttons)));
}

QAbstractButton* ModalSheet::button(QMessageBox::StandardButton which) const
{
    return buttonBox->button(QDialogButtonBox::StandardButton(which));
}

void ModalSheet::setDefaultButton(QPushButton* button)
{
    if (button) {
        button->setDefault(true);
    }
}

void ModalSheet::dressOkButton(const QString& text)
{
    QPushButton* ok = buttonBox->button(QDialogButtonBox::Ok);
    dressButton(ok, text, "component.apply_button");
    ok->setDefault(true);
}

void ModalSheet::dressDiscardButton(const QString& text)
{
    QPushButton* discard = buttonBox->button(QDialogButtonBox::Discard);
    dressButton(discard, text, "component.cancel_button");
    discard->setAutoDefault(true);
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
    watchWindow();
}

void ModalSheet::showWithBlock()
{
    show();
    if (blocksCloseButton) {
        greyCloseButton();
    }
}

void ModalSheet::greyCloseButton()
{
    greyedWindow = sheet->window();
    SHAPISetCloseButtonOfWindowEnable(sheet, false, &windowButtonState);
}

// Once no other sheet wants it grey.
void ModalSheet::giveCloseButtonBack()
{
    QWidget* const window = greyedWindow;
    greyedWindow.clear();
    if (!window) {
        return;
    }
    const auto sheets = window->findChildren<ModalSheet*>();
    if (std::none_of(sheets.cbegin(), sheets.cend(),
            [window](const ModalSheet* other) { return other->greyedWindow == window; })) {
        SHAPISetCloseButtonOfWindowEnable(window, true, &windowButtonState);
    }
}

void ModalSheet::watchWindow()
{
    leaveWindow();
    watchedWindow = sheet->window();
    watchedWindow->installEventFilter(sheet);
    QCoreApplication::instance()->installEventFilter(this);
}

void ModalSheet::leaveWindow()
{
    if (watchedWindow) {
        watchedWindow->removeEventFilter(sheet);
    }
    watchedWindow.clear();
    QCoreApplication::instance()->removeEventFilter(this);
}

// It lies on the stack of exec(), where the sheet, which may be deleted meanwhile, only points to it.
struct ModalSheet::Wait
{
    QEventLoop loop;
    std::optional<int> answer;
    Wait* outer = nullptr;
};

int ModalSheet::exec()
{
    if (innermost && !innermost->answer) {
        return 0;
    }
    Wait wait;
    wait.outer = innermost;
    innermost = &wait;
    const QPointer<ModalSheet> alive(this);
    showWithBlock();
    beginWaiting();
    if (!wait.answer) {
        wait.loop.exec();
    }
    if (alive && !wait.answer) {
        done(0);
    }
    if (alive) {
        innermost = wait.outer;
    }
    return wait.answer.value_or(0);
}

void ModalSheet::watchParent()
{
    if (sheet->parent()) {
        connect(sheet->parent(),
            SIGNAL(destroyed(QObject*)), this, SLOT(letGoOf(QObject*)), Qt::UniqueConnection);
    }
}

// The mask, or the window with it, is being deleted while exec() is on the stack, and often the sheet as
// well: it must not be deleted as a child, and if it has no answer yet, there is none to come.
void ModalSheet::letGoOf(QObject* dyingParent)
{
    if (!innermost || sheet->parent() != dyingParent) {
        return;
    }
    sheet->setParent(nullptr); // which gives back what the window had to do without
    innermost->loop.exit();
}

void ModalSheet::done(int ret)
{
    close(ret);
    Q_EMIT sheet->finished(ret);
}

void ModalSheet::buttonClick(QAbstractButton* which)
{
    done(buttonBox->standardButton(which));
}

void ModalSheet::close(int ret)
{
    if (blocksCloseButton) {
        giveCloseButtonBack();
    }
    greyedWindow.clear();
    if (innermost) {
        innermost->answer = ret;
        innermost->loop.exit();
    }
    leaveWindow();
    // The focus goes back to where the user was before, unless something else has taken it from the sheet.
    const QWidget* focus = formerFocus ? formerFocus->window()->focusWidget() : nullptr;
    const bool focusIsFree = !focus || sheet->isAncestorOf(focus);
    sheet->hide();
    if (opened) {
        QAccessibleEvent event(sheet, QAccessible::DialogEnd);
        QAccessible::updateAccessibility(&event);
    }
    opened = false;
    QWidget* const former = formerFocus;
    formerFocus.clear();
    if (focusIsFree && former && former->isVisible()) {
        former->setFocus(Qt::OtherFocusReason);
    }
}

void ModalSheet::abandon()
{
    formerFocus.clear(); // may be going the same way
    giveCloseButtonBack();
    if (opened) {
        close(0);
    }
}

// Qt leaves the focus in what is hidden if the window offers no other place, and there keys would still
// answer.
void ModalSheet::loseFocus()
{
    QWidget* const focus = sheet->window()->focusWidget();
    if (focus && sheet->isAncestorOf(focus)) {
        focus->clearFocus();
    }
}

bool ModalSheet::filterEvent(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close && blocksCloseButton) {
        event->ignore();
        return true;
    }
    if (watched != sheet->window()) {
        return false;
    }
    // Every shortcut of the window is taken from it, but those that belong to the sheet.
    if (event->type() == QEvent::ShortcutOverride && sheet->isVisible()) {
        const auto* press = static_cast<QKeyEvent*>(event);
        event->setAccepted(buttonsOf({ press->key() | int(press->modifiers()) }).isEmpty());
        return true;
    }
    return event->type() == QEvent::KeyPress && takeKey(static_cast<QKeyEvent*>(event));
}

QList<QAbstractButton*> ModalSheet::buttonsOf(const QKeySequence& shortcut) const
{
    QList<QAbstractButton*> buttons = buttonBox->buttons();
    buttons.erase(std::remove_if(buttons.begin(), buttons.end(),
                      [&shortcut](const QAbstractButton* candidate) {
                          return !candidate->isEnabled() || candidate->shortcut() != shortcut;
                      }),
        buttons.end());
    return buttons;
}

// Something in the window below may have the same mnemonic, and Qt would then only focus one of the two.
bool ModalSheet::answerMnemonic(const QKeySequence& shortcut)
{
    const QList<QAbstractButton*> own = buttonsOf(shortcut);
    if (own.size() != 1 || !sheet->isVisible() || !sheet->isActiveWindow()) {
        return false;
    }
    own.first()->animateClick();
    return true;
}

QWidget* ModalSheet::nextInFocusChain(
    QWidget* start, bool forward, const std::function<bool(const QWidget*)>& accepts)
{
    QWidget* widget = start;
    do {
        widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (accepts(widget)) {
            return widget;
        }
    } while (widget != start);
    return nullptr;
}

bool ModalSheet::focusNextPrevChild(bool next)
{
    if (!sheet->isVisible()) {
        return false;
    }
    QWidget* const focus = sheet->focusWidget();
    QWidget* const found = nextInFocusChain(
        focus && sheet->isAncestorOf(focus) ? focus : sheet, next, [this](const QWidget* candidate) {
            return sheet->isAncestorOf(candidate) && (candidate->focusPolicy() & Qt::TabFocus) != 0
                && candidate->isVisible() && candidate->isEnabled();
        });
    if (found) {
        found->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
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
}

// Of the sheet, and of the whole application while it is open.
bool ModalSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Shortcut) {
        return answerMnemonic(static_cast<QShortcutEvent*>(event)->key());
    }
    if (watched != sheet) {
        return false;
    }
    switch (event->type()) {
    case QEvent::LayoutRequest:
        keepContentWhole();
        break;
    case QEvent::ParentChange:
        watchParent();
        followWindow();
        break;
    case QEvent::Show:
        followWindow();
        break;
    case QEvent::HideToParent:
        loseFocus();
        break;
    default:
        break;
    }
    return false;
}

} // namespace vantkit::internal
