#include "json-file.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace {

QString quoted(const QString& text)
{
    return QStringLiteral("\"%1\"").arg(QRegularExpression::escape(text));
}

} // namespace

JsonFile::JsonFile(const QDir& folder, const QString& file, Finding::Weight absence, Findings& findings)
    : name(file)
{
    QFile device(folder.filePath(name));
    if (!device.exists()) {
        findings.push_back({ { name, 0 }, QStringLiteral("is missing"), absence });
        return;
    }
    if (!device.open(QIODevice::ReadOnly)) {
        findings.push_back({ { name, 0 }, device.errorString(), Finding::Unreadable });
        return;
    }
    const QByteArray bytes = device.readAll();
    text = QString::fromUtf8(bytes);
    QJsonParseError error {};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        const int line = bytes.left(error.offset).count('\n') + 1;
        findings.push_back({ { name, line }, error.errorString(), Finding::Unreadable });
    } else if (!document.isObject()) {
        findings.push_back({ { name, 1 }, QStringLiteral("is no object"), Finding::Unreadable });
    }
    object = document.object();
}

Place JsonFile::placeOfKey(const QString& key) const
{
    return placeOf(quoted(key) + QStringLiteral("\\s*:"), 0);
}

Place JsonFile::placeOfElement(const QString& array, const QString& element) const
{
    return placeOf(
        quoted(element), text.indexOf(QRegularExpression(quoted(array) + QStringLiteral("\\s*:"))));
}

QStringList JsonFile::array(const QString& key) const
{
    QStringList texts;
    for (const QJsonValue& element : object.value(key).toArray()) {
        texts << element.toString();
    }
    return texts;
}

Place JsonFile::placeOf(const QString& pattern, int begin) const
{
    const int offset = text.indexOf(QRegularExpression(pattern), qMax(begin, 0));
    return { name, offset == -1 ? 0 : text.leftRef(offset).count(QLatin1Char('\n')) + 1 };
}
