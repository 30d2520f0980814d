#include "widgets/vant-icon-button.h"

#include "image-manager/image-manager.h"
#include "style-manager/style-manager.h"
#include "utils/dpi-info.h"

#include <QMouseEvent>
#include <QPointer>

namespace {

// The disabled image is drawn as it is: without a pixmap for that mode, Qt would grey out what the theme has
// drawn.
QIcon iconOf(const QPixmap& pixmap)
{
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Disabled);
    return icon;
}

} // namespace

VantIconButton::VantIconButton(const QPixmap& pixmap)
{
    setDefaultIcon(pixmap);
    initialize();
}

VantIconButton::VantIconButton(const QString& imageName)
{
    setAllIcon(imageName);
    initialize();
}

void VantIconButton::initialize()
{
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setStyleSheet(getStyleSheet("component.icon_button", false));
    setPopupMode(QToolButton::InstantPopup);
}

void VantIconButton::setDefaultIcon(const QPixmap& pixmap)
{
    defaultIcon = iconOf(pixmap);
    pressIcon = defaultIcon;
    hoverIcon = defaultIcon;
    disableIcon = defaultIcon;
    setIconSizeFrom(pixmap);
    setIcon(defaultIcon);
}

void VantIconButton::setPressIcon(const QPixmap& pixmap)
{
    pressIcon = iconOf(pixmap);
}

void VantIconButton::setHoverIcon(const QPixmap& pixmap)
{
    hoverIcon = iconOf(pixmap);
}

void VantIconButton::setDisableIcon(const QPixmap& pixmap)
{
    disableIcon = iconOf(pixmap);
}

void VantIconButton::setAllIcon(const QString& imageName)
{
    const QPixmap normal = getGlobalImage(imageName, ImageManager::Normal);
    defaultIcon = iconOf(normal);
    hoverIcon = iconOf(getGlobalImage(imageName, ImageManager::Hover));
    pressIcon = iconOf(getGlobalImage(imageName, ImageManager::Click));
    disableIcon = iconOf(getGlobalImage(imageName, ImageManager::Disable));
    setIconSizeFrom(normal);
    setIcon(defaultIcon);
}

void VantIconButton::setIconSizeFrom(const QPixmap& pixmap)
{
    const double dpr = DPIinfo::getInstance().getDPR();
    m_iconSize = QSize(qRound(pixmap.width() / dpr), qRound(pixmap.height() / dpr));
}

void VantIconButton::showIcon(const QIcon& icon)
{
    setIcon(icon);
    setIconSize(m_iconSize);
}

void VantIconButton::showRestingIcon()
{
    showIcon(isEnabled() ? defaultIcon : disableIcon);
}

// The image is in place before the base class acts, so a slot of the click already sees it.

void VantIconButton::mousePressEvent(QMouseEvent* event)
{
    if (isEnabled()) {
        showIcon(pressIcon);
    }
    const QPointer<VantIconButton> self(this);
    QToolButton::mousePressEvent(event);
    // A menu that opened has been answered by now, and has taken the release.
    if (self && event->button() == Qt::LeftButton && !isDown()) {
        showRestingIcon();
    }
}

void VantIconButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (isEnabled()) {
        showIcon(defaultIcon);
    }
    QToolButton::mouseReleaseEvent(event);
}

void VantIconButton::enterEvent(QEvent* event)
{
    if (isEnabled()) {
        showIcon(hoverIcon);
    }
    QToolButton::enterEvent(event);
}

void VantIconButton::leaveEvent(QEvent* event)
{
    if (isEnabled() && !hasFocus()) {
        showIcon(defaultIcon);
    }
    QToolButton::leaveEvent(event);
}

void VantIconButton::showEvent(QShowEvent* event)
{
    showRestingIcon();
    QWidget::showEvent(event);
}

void VantIconButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange) {
        showRestingIcon();
    }
    QToolButton::changeEvent(event);
}
