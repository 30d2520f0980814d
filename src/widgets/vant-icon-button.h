#pragma once

#include "vantkit-export.h"

#include <QIcon>
#include <QToolButton>

/**
 * A tool button that shows nothing but an image, and swaps the image by itself: one at rest, one while the
 * pointer is over it, one while it is pressed, one while it is disabled. Style key "component.icon_button".
 *
 * The image is drawn at its logical size: its pixels divided by the display's device pixel ratio. It is made
 * without a parent: a layout or the caller gives it one.
 */
class VANTKIT_EXPORT VantIconButton : public QToolButton
{
    Q_OBJECT

public:
    /** Shows @p pixmap in all four states, until a setter replaces one. */
    explicit VantIconButton(const QPixmap& pixmap);

    /** Shows the four states of @p imageName in the image catalogue. See setAllIcon(). */
    explicit VantIconButton(const QString& imageName);

    /** Sets the look that both constructors share; they call it. */
    void initialize();

    /** Replaces all four images by @p pixmap and shows it at once. */
    void setDefaultIcon(const QPixmap& pixmap);

    /** Replaces the image of the pressed state. It shows when the button is pressed next. */
    void setPressIcon(const QPixmap& pixmap);

    /** Replaces the image of the state under the pointer. It shows when the pointer enters next. */
    void setHoverIcon(const QPixmap& pixmap);

    /** Replaces the image of the disabled state. It shows when the button is disabled next. */
    void setDisableIcon(const QPixmap& pixmap);

    /**
     * Takes all four images from the catalogue, by the name @p imageName, and shows the normal one at once.
     * A state without a file shows the normal image, and an unknown name none; both are warnings.
     */
    void setAllIcon(const QString& imageName);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setIconSizeFrom(const QPixmap& pixmap);
    void showIcon(const QIcon& icon);
    void showRestingIcon();

    QIcon defaultIcon;
    QIcon pressIcon;
    QIcon hoverIcon;
    QIcon disableIcon;
    QSize m_iconSize;
};
