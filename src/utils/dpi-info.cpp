#include "utils/dpi-info.h"

#include "utils/design-pixels_p.h"

#include <QApplication>
#include <QDesktopWidget>

namespace {

int digitsBefore(const QString& text, int end)
{
    while (end > 0 && text.at(end - 1).isDigit()) {
        --end;
    }
    return end;
}

// Where the number begins that ends before @p end, and @p end itself if there is none. What it finds is what
// the expression (\d+\.?\d*)(px) finds from the left; reading from the unit back costs one pass, however long
// a run of digits without a unit is.
int numberBefore(const QString& text, int end)
{
    const int fraction = digitsBefore(text, end);
    if (fraction > 0 && text.at(fraction - 1) == QLatin1Char('.')) {
        const int point = fraction - 1;
        const int whole = digitsBefore(text, point);
        if (whole < point) {
            return whole;
        }
    }
    return fraction;
}

} // namespace

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
    const QLatin1String unit("px");
    QString scaled;
    scaled.reserve(text.size());
    int copied = 0;
    for (int at = text.indexOf(unit); at != -1; at = text.indexOf(unit, at + unit.size())) {
        const int number = numberBefore(text, at);
        if (number == at) {
            continue;
        }
        const double value = text.midRef(number, at - number).toDouble() * m_dpi;
        scaled += text.midRef(copied, number - copied);
        scaled += QString::number(vantkit::internal::cutToInt(value)) + unit;
        copied = at + unit.size();
    }
    scaled += text.midRef(copied);
    return scaled;
}
