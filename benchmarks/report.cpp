#include "report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace bench {

namespace {

QString time(double nanoseconds)
{
    if (nanoseconds < 1e3) {
        return QStringLiteral("%1 ns").arg(nanoseconds, 0, 'f', 0);
    }
    if (nanoseconds < 1e6) {
        return QStringLiteral("%1 µs").arg(nanoseconds / 1e3, 0, 'f', 1);
    }
    return QStringLiteral("%1 ms").arg(nanoseconds / 1e6, 0, 'f', 1);
}

QString memory(double bytes)
{
    return QStringLiteral("%1 KB").arg(bytes / 1024, 0, 'f', 1);
}

QString amount(const Row& row, double value)
{
    switch (row.quantity) {
    case Quantity::Memory:
        return memory(value);
    case Quantity::Count:
        return QString::number(value);
    case Quantity::Time:
        break;
    }
    return time(value);
}

// Ratios are near one or far below it; both keep two digits that mean something.
QString ratio(const Result& result, double value)
{
    return QString::number(value, 'f', result.ratio < 0.1 ? 4 : 2);
}

QString ceiling(const Row& row)
{
    return row.ceiling ? QString::number(*row.ceiling) : QStringLiteral("-");
}

QString verdict(const Result& result)
{
    if (!result.row.ceiling) {
        return QStringLiteral("reported");
    }
    return result.isAboveCeiling() ? QStringLiteral("ABOVE") : QStringLiteral("ok");
}

QString quartiles(const Result& result)
{
    return ratio(result, result.lowerQuartile) + QStringLiteral(" - ") + ratio(result, result.upperQuartile);
}

QString tableLine(const QStringList& cells)
{
    return QStringLiteral("%1 %2 %3 %4  %5 %6  %7\n")
        .arg(cells[0], -28)
        .arg(cells[1], 10)
        .arg(cells[2], 12)
        .arg(cells[3], 8)
        .arg(cells[4], -16)
        .arg(cells[5], 8)
        .arg(cells[6]);
}

QJsonObject jsonSide(Quantity quantity, const QString& what, double median)
{
    static const std::map<Quantity, QString> names { { Quantity::Time, QStringLiteral("median_ns") },
        { Quantity::Memory, QStringLiteral("median_bytes") },
        { Quantity::Count, QStringLiteral("median_count") } };
    const QString name = names.at(quantity);
    return { { QStringLiteral("what"), what }, { name, median } };
}

QJsonObject jsonRow(const Result& result)
{
    return {
        { QStringLiteral("name"), result.row.name },
        { QStringLiteral("unit"), result.row.unit },
        { QStringLiteral("samples"), result.samples },
        { QStringLiteral("kit"), jsonSide(result.row.quantity, result.row.kit, result.median.kit) },
        { QStringLiteral("alternative"),
            jsonSide(result.row.quantity, result.row.alternative, result.median.alternative) },
        { QStringLiteral("ratio"), result.ratio },
        { QStringLiteral("ratio_quartiles"), QJsonArray { result.lowerQuartile, result.upperQuartile } },
        { QStringLiteral("ceiling"), result.row.ceiling ? QJsonValue(*result.row.ceiling) : QJsonValue() },
        { QStringLiteral("above_ceiling"), result.isAboveCeiling() },
    };
}

} // namespace

QString tableHead()
{
    return tableLine({ QStringLiteral("row"), QStringLiteral("kit"), QStringLiteral("alternative"),
        QStringLiteral("ratio"), QStringLiteral("middle half"), QStringLiteral("ceiling"), {} });
}

QString tableRow(const Result& result)
{
    return tableLine({ result.row.name, amount(result.row, result.median.kit),
        amount(result.row, result.median.alternative), ratio(result, result.ratio), quartiles(result),
        ceiling(result.row), verdict(result) });
}

QString markdown(const std::vector<Result>& results)
{
    QString text = QStringLiteral("| Row | Kit | Alternative | Ratio | Middle half | Ceiling |\n"
                                  "|---|---|---|---:|---:|---:|\n");
    for (const Result& result : results) {
        const QStringList cells { QLatin1Char('`') + result.row.name + QLatin1Char('`'), result.row.kit,
            result.row.alternative, ratio(result, result.ratio), quartiles(result), ceiling(result.row) };
        text += QStringLiteral("| %1 |\n").arg(cells.join(QStringLiteral(" | ")));
    }
    return text;
}

QByteArray json(const std::vector<Result>& results)
{
    QJsonArray rows;
    for (const Result& result : results) {
        rows.append(jsonRow(result));
    }
    return QJsonDocument(QJsonObject { { QStringLiteral("rows"), rows } }).toJson();
}

QString list(const std::vector<Row>& rows)
{
    QString text;
    for (const Row& row : rows) {
        const QString limit =
            row.ceiling ? QStringLiteral("at most ") + ceiling(row) : QStringLiteral("reported");
        text += QStringLiteral("%1 %2\n%3 against %4 (%5)\n")
                    .arg(row.name, -28)
                    .arg(row.kit, QString(29, QLatin1Char(' ')), row.alternative, limit);
    }
    return text;
}

} // namespace bench
