#include "palette.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QColor darker(const QColor& colour, double factor)
{
    return QColor::fromHslF(
        std::max(0.0, colour.hslHueF()), colour.hslSaturationF(), colour.lightnessF() * factor);
}

QColor softer(const QColor& colour)
{
    return QColor::fromHslF(
        std::max(0.0, colour.hslHueF()), std::min(0.75, double(colour.hslSaturationF())), 0.945);
}

void add(Colours& colours, const QString& name, const QColor& colour)
{
    if (!colours.contains(name)) {
        colours.insert(name, colour);
    }
}

} // namespace

Palette paletteOf(const QString& json)
{
    static const QRegularExpression entry(QStringLiteral("\"([\\w-]+)\"\\s*:\\s*\"(#[0-9A-Fa-f]{6})\""));
    Palette palette;
    for (auto match = entry.globalMatch(json); match.hasNext();) {
        const auto found = match.next();
        palette.emplace_back(found.captured(1), QColor(found.captured(2)));
    }
    return palette;
}

Colours withShades(Colours colours)
{
    for (const QString& name : { QStringLiteral("accent"), QStringLiteral("danger") }) {
        if (colours.contains(name)) {
            const QColor colour = colours.value(name);
            add(colours, name + QStringLiteral("-hover"), darker(colour, 0.87));
            add(colours, name + QStringLiteral("-press"), darker(colour, 0.72));
            add(colours, name + QStringLiteral("-soft"), softer(colour));
        }
    }
    if (colours.contains(QStringLiteral("accent"))) {
        add(colours, QStringLiteral("focus"), colours.value(QStringLiteral("accent")));
    }
    return colours;
}
