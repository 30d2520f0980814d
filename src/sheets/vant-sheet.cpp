#include "sheets/vant-sheet.h"

#include "image-manager/image-manager.h"
#include "sheets/sheet-accessible_p.h"
#include "utils/design-pixels_p.h"

#include <QHBoxLayout>
#include <QPainter>

VantSheet::VantSheet(QWidget* parent)
    : QFrame(parent)
    , shadowWidth(vantkit::internal::designPixels(22))
{
    vantkit::internal::installSheetAccessibility();
    keepContentOffShadow();
}

void VantSheet::keepContentOffShadow()
{
    setContentsMargins(shadowWidth, shadowWidth, shadowWidth, shadowWidth);
}

void VantSheet::setWidget(QWidget* widget)
{
    delete layout();
    auto* content = new QHBoxLayout(this);
    content->addWidget(widget, 0, Qt::AlignCenter);
    updateGeometry();
    adjustSize();
}

void VantSheet::showEvent(QShowEvent* event)
{
    keepContentOffShadow();
    QWidget::showEvent(event);
}

void VantSheet::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    drawShadow(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(Qt::white, Qt::SolidPattern));
    const QRect panel(shadowWidth, shadowWidth, width() - 2 * shadowWidth, height() - 2 * shadowWidth);
    painter.drawRects(&panel, 1);
}

void VantSheet::drawShadow(QPainter& painter)
{
    struct Piece
    {
        const char* image = nullptr;
        QRect target;
        bool stretched = false;
    };

    const int s = shadowWidth;
    const int right = width() - s;
    const int bottom = height() - s;
    const int innerWidth = width() - 2 * s;
    const int innerHeight = height() - 2 * s;
    const Piece pieces[] {
        { "bg_tutorial_lt", { 0, 0, s, s }, false },
        { "bg_tutorial_rt", { right, 0, s, s }, false },
        { "bg_tutorial_lb", { 0, bottom, s, s }, false },
        { "bg_tutorial_rb", { right, bottom, s, s }, false },
        { "bg_tutorial_l", { 0, s, s, innerHeight }, true },
        { "bg_tutorial_r", { right, s, s, innerHeight }, true },
        { "bg_tutorial_t", { s, 0, innerWidth, s }, true },
        { "bg_tutorial_b", { s, bottom, innerWidth, s }, true },
    };
    for (const Piece& piece : pieces) {
        QPixmap image = getGlobalImage(piece.image, ImageManager::Normal);
        if (piece.stretched && !image.isNull()) {
            image = image.scaled(piece.target.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
        }
        painter.drawPixmap(QRectF(piece.target), image, QRectF());
    }
}
