#include "style-manager/style-manager.h"

#include "image-manager/image-manager.h"
#include "utils/debug-message.h"
#include "utils/dpi-info.h"
#include "utils/text-decoding_p.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

namespace {

const QLatin1String headerMark("==");

QString readTemplates(const std::vector<QString>& files)
{
    QString text;
    for (const QString& path : files) {
        if (!QFile::exists(path)) {
            qCWarning(debug_message) << "file" << path << "not exist";
            continue;
        }
        QFile file(path);
        if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
            text += vantkit::internal::textUpToNul(file.readAll());
        }
        text += QLatin1Char('\n');
    }
    return text;
}

// What stands between an opening mark and the first closing mark behind it goes, marks included. The text is
// scanned once, so that any number of marks that are never closed costs no more than one.
QString withoutComments(const QString& text, QLatin1String opening, QLatin1String closing)
{
    QString rest;
    rest.reserve(text.size());
    int copied = 0;
    for (int begin = text.indexOf(opening); begin != -1; begin = text.indexOf(opening, copied)) {
        const int end = text.indexOf(closing, begin + opening.size());
        if (end == -1) {
            break;
        }
        rest += text.midRef(copied, begin - copied);
        copied = end + closing.size();
    }
    rest += text.midRef(copied);
    return rest;
}

bool isHeader(const QString& line)
{
    return line.startsWith(headerMark) && line.endsWith(headerMark);
}

// Where paths have back slashes, these would begin escapes, and two in front of a machine's name a comment.
QString inStyleSheet(const QString& folder)
{
    if (QDir::separator() == QLatin1Char('/')) {
        return folder;
    }
    const QString path = QDir::fromNativeSeparators(folder);
    return path.startsWith(QLatin1String("//")) ? QStringLiteral("/\\") + path.mid(1) : path;
}

QString keyOf(QString header)
{
    return header.remove(QLatin1Char('=')).remove(QLatin1Char(' '));
}

} // namespace

StyleManager& StyleManager::getInstance()
{
    static StyleManager instance;
    return instance;
}

void StyleManager::initialize(const std::vector<QString>& files)
{
    QString text = readTemplates(files);
    ImageManager& images = ImageManager::getInstance();
    // The longer token first: it contains the other one. QString::replace would move the rest of the text
    // again and again.
    text = text.split(QStringLiteral("TMPIMG_LOC")).join(inStyleSheet(images.getTempImageFolder()));
    text = text.split(QStringLiteral("IMG_LOC")).join(inStyleSheet(images.getImageFolder()));
    text = withoutComments(text, QLatin1String("/*"), QLatin1String("*/"));
    text = withoutComments(text, QLatin1String("//"), QLatin1String("\n"));

    QTextStream lines(&text, QIODevice::ReadOnly);
    QString key;
    QString section;
    for (QString line; lines.readLineInto(&line);) {
        if (!isHeader(line)) {
            section += QLatin1Char('\n') + line;
            continue;
        }
        // Lines without a key stay in front of the section that comes next.
        if (!key.isEmpty()) {
            m_style_sheets[key] = section;
            section.clear();
        }
        key = keyOf(line);
    }
    if (!key.isEmpty()) {
        m_style_sheets[key] = section;
    }
}

QString StyleManager::getStyleSheet(const QString& key, bool raw)
{
    const auto found = m_style_sheets.find(key);
    if (found == m_style_sheets.end()) {
        qCWarning(debug_message) << "Cannot find stylesheet" << key;
        return {};
    }
    return raw ? found->second : DPIinfo::getInstance().getScaledStyleSheet(found->second);
}

QString getStyleSheet(const char* key, bool raw)
{
    return StyleManager::getInstance().getStyleSheet(QString::fromUtf8(key), raw);
}

QString getStyleSheet(const QString& key, bool raw)
{
    return StyleManager::getInstance().getStyleSheet(key, raw);
}
