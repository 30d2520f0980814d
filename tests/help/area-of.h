#pragma once

#include <QWidget>

/** The rectangle that @p color covers on @p widget. */
inline QRect areaOf(const QColor& color, QWidget* widget)
{
    const QImage image = widget->grab().toImage();
    QRect covered;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) {
                covered |= QRect(x, y, 1, 1);
            }
        }
    }
    return covered;
}
