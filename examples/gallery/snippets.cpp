#include "snippets.h"

#include <QFile>
#include <QStringList>

namespace gallery {

namespace {

// But the header of the snippets themselves.
QString includesOf(const QStringList& lines)
{
    QString includes;
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1String("#include <"))) {
            includes += line + QLatin1Char('\n');
        }
    }
    return includes;
}

} // namespace

QString snippetOf(const QString& section)
{
    QFile file(QStringLiteral(":/gallery/snippets/%1.cpp").arg(section.section(QLatin1Char('.'), 0, 0)));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QString text = QString::fromUtf8(file.readAll());
    const QString mark = QStringLiteral("//! [%1]\n").arg(section);
    const QString code = text.section(mark, 1, 1).trimmed();
    const QStringList lines = text.split(QLatin1Char('\n'));
    return code.isEmpty() ? code : includesOf(lines) + QLatin1Char('\n') + code + QLatin1Char('\n');
}

} // namespace gallery
