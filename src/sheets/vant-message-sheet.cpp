#include "sheets/vant-message-sheet.h"

#include "image-manager/image-manager.h"
#include "sheets/dress-button_p.h"
#include "sheets/vant-message-sheet_p.h"
#include "style-manager/style-manager.h"
#include "utils/accessible-filter.h"
#include "utils/design-pixels_p.h"
#include "widgets/message-label.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMovie>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using vantkit::internal::designPixels;
using vantkit::internal::textOrString;

namespace {

struct TypeTraits
{
    const char* icon; // null leaves the icon as it is
    bool hasOk;
    bool hasDiscard;
    const char* okText;
    const char* styleKey;
};

TypeTraits traitsOf(VantMessageSheet::MessageType type)
{
    const char* const processing = "component.message_sheet_processing";
    const char* const other = "component.message_sheet_other";
    switch (type) {
    case VantMessageSheet::Processing:
        return { "app_img", false, false, nullptr, processing };
    case VantMessageSheet::Information:
        return { "icon_information", true, false, "ok", other };
    case VantMessageSheet::Warning:
        return { "icon_warning", true, false, "ok", other };
    case VantMessageSheet::Question:
        return { "icon_question", true, true, "ok", other };
    case VantMessageSheet::Upgrading:
        return { "icon_information", true, true, "wizard_client_upgrade", other };
    case VantMessageSheet::WarningQuestion:
        return { "icon_warning", true, true, "ok", other };
    case VantMessageSheet::ProcessingMovie:
        return { nullptr, false, false, nullptr, processing };
    }
    return { nullptr, false, false, nullptr, other };
}

// No function: the type of a pointer to it, which std::function asks for, would be exported.
const auto takesFocus = [](const QWidget* widget) { return widget->focusPolicy() != Qt::NoFocus; };

template <typename Iterator>
QWidget* firstThatTakesFocus(Iterator begin, Iterator end)
{
    const Iterator first = std::find_if(begin, end, takesFocus);
    return first == end ? nullptr : *first;
}

} // namespace

DialogButtonBoxStyle::DialogButtonBoxStyle()
    : QProxyStyle(nullptr)
{ }

int DialogButtonBoxStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returnData) const
{
    return hint == SH_DialogButtonLayout ? QDialogButtonBox::WinLayout
                                         : baseStyle()->styleHint(hint, option, widget, returnData);
}

VantMessageSheetPrivate::VantMessageSheetPrivate(VantMessageSheet* messageSheet, QObject* parent)
    : ModalSheet(messageSheet, parent)
    , q(messageSheet)
    , textLabel(new MessageLabel(q))
    , iconLabel(new QLabel(q))
{
    buttonBox = new QDialogButtonBox(q);
    // Before there are buttons, each of which would have to take on another style. They use it to their end,
    // and the sheet deletes its children in their order.
    auto* style = new DialogButtonBoxStyle;
    style->setParent(q);
    buttonBox->setStyle(style);
}

void VantMessageSheetPrivate::initialize()
{
    initialize(MsgBoxCustomBtnText());
}

void VantMessageSheetPrivate::initialize(const MsgBoxCustomBtnText& customBtnText)
{
    const TypeTraits traits = traitsOf(type);
    if (traits.icon) {
        setIconPixmap(getGlobalImage(traits.icon, ImageManager::Normal));
    }
    setStandardButtons((traits.hasOk ? QMessageBox::Ok : QMessageBox::NoButton)
        | (traits.hasDiscard ? QMessageBox::Discard : QMessageBox::NoButton));
    QAbstractButton* ok = button(QMessageBox::Ok);
    if (ok) {
        dressOkButton(textOrString(customBtnText.okText, traits.okText));
        ok->setFixedHeight(designPixels(28));
        ok->setMinimumWidth(designPixels(120));
    }
    QAbstractButton* discard = button(QMessageBox::Discard);
    if (discard) {
        dressDiscardButton(textOrString(customBtnText.cancelText, "cancel"));
        discard->setFixedHeight(designPixels(28));
        discard->setMinimumWidth(designPixels(80));
    }
    q->setStyleSheet(getStyleSheet(traits.styleKey, false));
    connectButtons();
    setupLayout();
    textLabel->installEventFilter(q);
    textLabel->setStyleSheet(getStyleSheet("component.message_sheet_text", false));
    if (informativeLabel) {
        informativeLabel->installEventFilter(q);
        informativeLabel->setStyleSheet(getStyleSheet("component.message_sheet_informative_text", false));
    }
    for (QAbstractButton* shown : { ok, discard }) {
        if (shown) {
            shown->installEventFilter(q);
        }
    }
}

bool VantMessageSheetPrivate::hasIcon() const
{
    const QPixmap* pixmap = iconLabel->pixmap();
    return (pixmap && !pixmap->isNull()) || iconLabel->movie();
}

void VantMessageSheetPrivate::setupLayout()
{
    delete q->layout();
    auto* outer = new QVBoxLayout(q);
    auto* texts = new QVBoxLayout; // the row adopts it
    auto* row = new QHBoxLayout; // the outer layout adopts it
    outer->setContentsMargins(designPixels(20), designPixels(20), designPixels(20), designPixels(10));
    outer->setSpacing(0);
    for (QBoxLayout* inner : std::initializer_list<QBoxLayout*> { texts, row }) {
        inner->setContentsMargins(0, 0, 0, 0);
        inner->setSpacing(0);
    }
    iconLabel->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    texts->addWidget(textLabel);
    if (informativeLabel) {
        texts->addSpacing(designPixels(6));
        texts->addWidget(informativeLabel);
    }
    iconLabel->setVisible(hasIcon());
    if (hasIcon()) {
        row->addWidget(iconLabel, 0, Qt::AlignTop);
        row->addSpacing(designPixels(20));
    }
    row->addLayout(texts);
    outer->addLayout(row);
    if (!buttonBox->buttons().isEmpty()) {
        outer->addSpacing(designPixels(20));
        outer->addWidget(buttonBox);
    }
    fixWidth(getPreferredWidth());
}

QList<QWidget*> VantMessageSheetPrivate::focusWidgets() const
{
    AccessibleFilter filter;
    filter.setFilterWidgets({ q });
    return accessibleList(q, filter);
}

void VantMessageSheetPrivate::beginWaiting()
{
    textLabel->setFocus(Qt::TabFocusReason);
    QMovie* movie = iconLabel->movie();
    if (type == VantMessageSheet::ProcessingMovie && movie && movie->isValid()) {
        movie->start();
    }
}

void VantMessageSheetPrivate::done(int ret)
{
    if (QMovie* movie = iconLabel->movie()) {
        movie->stop();
    }
    ModalSheet::done(ret);
}

bool VantMessageSheetPrivate::takeKey(QKeyEvent* press)
{
    if (!q->isVisible()) {
        return false;
    }
    if (!pressButtonOf(press->key()) && (press->key() == Qt::Key_Tab || press->key() == Qt::Key_Backtab)) {
        q->restrictedFocus(q->window(), press);
    }
    return true;
}

int VantMessageSheetPrivate::getPreferredWidth()
{
    const double parent = parentWidth();
    if (parent == 540) {
        return 480;
    }
    return parent - 40 > 540 ? 540 : vantkit::internal::cutToInt(parent - 40);
}

void VantMessageSheetPrivate::setIcon(QMessageBox::Icon icon)
{
    const QPixmap standard = QMessageBox::standardIcon(icon);
    if (standard.isNull()) {
        setIconPixmap(standard);
        return;
    }
    const double dpi = DPIinfo::getInstance().getDPI();
    setIconPixmap(standard.scaled(qRound(standard.width() * dpi), qRound(standard.height() * dpi),
        Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void VantMessageSheetPrivate::setIconPixmap(const QPixmap& pixmap)
{
    const QMovie* movie = iconLabel->movie();
    iconLabel->setPixmap(pixmap);
    delete movie;
}

VantMessageSheet::VantMessageSheet(
    const MsgBoxCustomBtnText& customBtnText, MessageType type, QWidget* parent)
    : VantSheet(parent)
    , d(new VantMessageSheetPrivate(this, this))
{
    d->type = type;
    d->initialize(customBtnText);
}

VantMessageSheet::VantMessageSheet(MessageType type, QWidget* parent)
    : VantMessageSheet(MsgBoxCustomBtnText(), type, parent)
{ }

VantMessageSheet::VantMessageSheet(MessageType type, const QString& text, QWidget* parent)
    : VantMessageSheet(MsgBoxCustomBtnText(), type, parent)
{
    setText(text);
}

VantMessageSheet::VantMessageSheet(
    MessageType type, const QString& text, const QString& informativeText, QWidget* parent)
    : VantMessageSheet(type, text, parent)
{
    setInformativeText(informativeText);
}

VantMessageSheet::VantMessageSheet(
    MessageType type, const QString& text, const MsgBoxCustomBtnText& customBtnText, QWidget* parent)
    : VantMessageSheet(customBtnText, type, parent)
{
    setText(text);
}

VantMessageSheet::VantMessageSheet(const QString& text, const QString& movieFile, QWidget* parent)
    : VantMessageSheet(MsgBoxCustomBtnText(), ProcessingMovie, parent)
{
    auto* movie = new QMovie(movieFile);
    movie->setParent(d->iconLabel);
    const int side = qRound(32 * DPIinfo::getInstance().getDPI());
    movie->setScaledSize(QSize(side, side));
    d->iconLabel->setMovie(movie);
    setText(text);
}

VantMessageSheet::~VantMessageSheet()
{
    d->abandon();
}

void VantMessageSheet::setMessageType(MessageType type)
{
    d->type = type;
    d->initialize();
}

void VantMessageSheet::setText(const QString& text)
{
    d->setParagraph(d->textLabel, text, 24);
    d->textLabel->setAlignment(Qt::AlignTop);
    d->textLabel->setFocusPolicy(Qt::StrongFocus);
    d->textLabel->setTextInteractionFlags(
        Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    d->textLabel->setOpenExternalLinks(true);
    setAccessibleName(d->textLabel->accessibleName());
    d->setupLayout();
}

void VantMessageSheet::setInformativeText(const QString& text)
{
    if (text.isEmpty()) {
        if (d->informativeLabel) {
            d->informativeLabel->hide();
            d->informativeLabel->deleteLater();
            d->informativeLabel = nullptr;
        }
        setAccessibleDescription(QString());
        d->setupLayout();
        return;
    }
    if (!d->informativeLabel) {
        d->informativeLabel = new MessageLabel(this);
        d->informativeLabel->setTextInteractionFlags(Qt::TextInteractionFlags(
            style()->styleHint(QStyle::SH_MessageBox_TextInteractionFlags, nullptr, this)));
        d->informativeLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        d->informativeLabel->setOpenExternalLinks(true);
        d->informativeLabel->setFocusPolicy(Qt::StrongFocus);
        setTabOrder(d->textLabel, d->informativeLabel);
    }
    d->setParagraph(d->informativeLabel, text, 20);
    setAccessibleDescription(d->informativeLabel->accessibleName());
    d->setupLayout();
}

void VantMessageSheet::setIcon(const QPixmap& pixmap)
{
    d->setIconPixmap(pixmap);
    d->setupLayout();
}

QAbstractButton* VantMessageSheet::button(QMessageBox::StandardButton which) const
{
    return d->button(which);
}

void VantMessageSheet::setDefaultButton(QPushButton* button)
{
    vantkit::internal::ModalSheet::setDefaultButton(button);
}

void VantMessageSheet::setBlockWindowButton(bool block)
{
    d->blocksCloseButton = block;
}

void VantMessageSheet::showSheet()
{
    d->show();
}

void VantMessageSheet::showSheetWithBlock()
{
    d->showWithBlock();
}

int VantMessageSheet::exec()
{
    return d->exec();
}

void VantMessageSheet::done(int ret)
{
    d->done(ret);
}

void VantMessageSheet::quit()
{
    done(0);
}

void VantMessageSheet::buttonClick(QAbstractButton* which)
{
    d->buttonClick(which);
}

bool VantMessageSheet::eventFilter(QObject* watched, QEvent* event)
{
    return d->filterEvent(watched, event) || VantSheet::eventFilter(watched, event);
}

void VantMessageSheet::showEvent(QShowEvent* event)
{
    d->buttonBox->setFocusPolicy(Qt::NoFocus);
    for (const auto which : { QDialogButtonBox::Ok, QDialogButtonBox::Discard }) {
        if (QPushButton* button = d->buttonBox->button(which)) {
            button->setFocusPolicy(Qt::StrongFocus);
        }
    }
    VantSheet::showEvent(event);
}

void VantMessageSheet::markFirstFocusWidget()
{
    const QList<QWidget*> widgets = d->focusWidgets();
    d->firstFocusWidget = firstThatTakesFocus(widgets.cbegin(), widgets.cend());
}

void VantMessageSheet::markLastFocusWidget()
{
    const QList<QWidget*> widgets = d->focusWidgets();
    d->lastFocusWidget = firstThatTakesFocus(widgets.crbegin(), widgets.crend());
}

void VantMessageSheet::restrictedFocus(QObject* watched, QKeyEvent* event)
{
    auto* start = qobject_cast<QWidget*>(watched);
    if (!start) {
        return;
    }
    const bool forward = event->key() == Qt::Key_Tab;
    QWidget* next = vantkit::internal::ModalSheet::nextInFocusChain(start, forward, takesFocus);
    if (!d->focusWidgets().contains(next)) {
        markFirstFocusWidget(); // of those that there are now
        markLastFocusWidget();
        next = forward ? d->firstFocusWidget : d->lastFocusWidget;
    }
    if (next) {
        next->setFocus(Qt::TabFocusReason);
    }
}

bool VantMessageSheet::focusNextPrevChild(bool next)
{
    return d->focusNextPrevChild(next) || VantSheet::focusNextPrevChild(next);
}
