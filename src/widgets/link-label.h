#pragma once

#include "vantkit-export.h"

#include <QLabel>

/**
 * A label that behaves like a link: the pointer becomes a hand and the text is underlined while the pointer
 * is over it.
 *
 * It keeps a link for the application but does not open it: read getHyperLink() when clicked() comes. It has
 * no style key.
 */
class VANTKIT_EXPORT LinkLabel : public QLabel
{
    Q_OBJECT

public:
    /** A label that reads @p text and has no link yet. */
    explicit LinkLabel(const QString& text, QLabel* parent = nullptr);
    ~LinkLabel() override;

    /** Keeps @p link, which may be any text, for getHyperLink(). The label looks the same. */
    void setHyperLink(const QString& link);
    /** The link as it was set; empty until then. */
    QString getHyperLink();

Q_SIGNALS:
    /**
     * A mouse button, any of them, went down on the label. After the right one Qt asks the label for a
     * context menu, so a slot that deletes the label takes deleteLater().
     */
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class OverrideCursor { None, Set, GivenBack };

    void setUnderlined(bool underlined);
    void giveCursorBack();

    QString hyperLink;
    OverrideCursor overrideCursor = OverrideCursor::None;
};
