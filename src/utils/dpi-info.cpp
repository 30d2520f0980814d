#include "utils/dpi-info.h"

#include "utils/design-pixels_p.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QRegExp>

DPIinfo& DPIinfo::getInstance()
{
    static DPIinfo instance;
    return instance;
}

DPIinfo::DPIinfo()
    : m_dpi(QApplication::desktop()->logicalDpiX() / 96.0)
    , m_dpr(QApplication::desktop()->devicePixelRatio())
{ }

double DPIinfo::getDPI()
{
    return m_dpi;
}

double DPIinfo::getDPR()
{
    return m_dpr;
}

QString DPIinfo::getScaledStyleSheet(QString text)
{
    QRegExp pixelValue(QStringLiteral("(\\d+\\.?\\d*)(px)"));
    QString scaled;
    scaled.reserve(text.size());
    int copied = 0;
    for (int at = pixelValue.indexIn(text); at != -1; at = pixelValue.indexIn(text, copied)) {
        const int value = vantkit::internal::cutToInt(pixelValue.cap(1).toDouble() * m_dpi);
        scaled += text.midRef(copied, at - copied);
        scaled += QStringLiteral("%1px").arg(value);
        copied = at + pixelValue.matchedLength();
    }
    scaled += text.midRef(copied);
    return scaled;
}
