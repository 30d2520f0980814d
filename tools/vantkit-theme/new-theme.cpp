#include "new-theme.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>

namespace {

const QString paletteFile = QStringLiteral("palette.json");

QString contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/** Puts new colours in the place of old ones. */
class Painter
{
public:
    Painter(Palette palette, const Colours& colours)
        : m_palette(std::move(palette))
        , m_colours(colours)
    { }

    /** The text of a template, or of the source of an image. */
    QString painted(const QString& text) const;
    QString paintedPalette(QString json) const;

private:
    QString paintedLine(QString line, const QStringList& namesInFile) const;
    QStringList namesIn(const QString& text) const;
    QString nameOf(const QColor& colour, const QStringList& names) const;

    Palette m_palette;
    Colours m_colours;
};

/** The names of colours in the comments of a text. */
QStringList Painter::namesIn(const QString& text) const
{
    static const QRegularExpression comment(
        QStringLiteral("/\\*.*?\\*/|<!--.*?-->"), QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression word(QStringLiteral("[a-z]+(-[a-z]+)*"));
    QStringList names;
    for (auto comments = comment.globalMatch(text); comments.hasNext();) {
        for (auto words = word.globalMatch(comments.next().captured()); words.hasNext();) {
            names << words.next().captured();
        }
    }
    return names;
}

// Two names may have one value. The one that is named beside it is meant, or else the first in the palette.
QString Painter::nameOf(const QColor& colour, const QStringList& names) const
{
    QString name;
    for (const auto& [candidate, value] : m_palette) {
        if (value == colour && names.contains(candidate)) {
            return candidate;
        }
        if (value == colour && name.isEmpty()) {
            name = candidate;
        }
    }
    return name;
}

QString Painter::paintedLine(QString line, const QStringList& namesInFile) const
{
    static const QRegularExpression colour(QStringLiteral("#[0-9A-Fa-f]{6}\\b"));
    const QStringList own = namesIn(line);
    for (auto match = colour.globalMatch(line); match.hasNext();) {
        const auto found = match.next();
        const QString name = nameOf(QColor(found.captured()), own.isEmpty() ? namesInFile : own);
        if (m_colours.contains(name)) {
            line.replace(
                found.capturedStart(), found.capturedLength(), m_colours.value(name).name().toUpper());
        }
    }
    return line;
}

QString Painter::painted(const QString& text) const
{
    // A template holds many rules, and the source of an image one picture.
    const QStringList names = text.startsWith(QLatin1String("<svg")) ? namesIn(text) : QStringList();
    QStringList lines = text.split(QLatin1Char('\n'));
    std::transform(lines.begin(), lines.end(), lines.begin(),
        [this, &names](const QString& line) { return paintedLine(line, names); });
    return lines.join(QLatin1Char('\n'));
}

QString Painter::paintedPalette(QString json) const
{
    for (auto colour = m_colours.begin(); colour != m_colours.end(); ++colour) {
        const QRegularExpression entry(QStringLiteral("(\"%1\"\\s*:\\s*\")#\\w+").arg(colour.key()));
        json.replace(entry, QStringLiteral("\\1") + colour.value().name().toUpper());
    }
    return json;
}

// The icons of file types keep their colours: paper is white in any theme, and kinds are told apart by them.
bool isPainted(const QString& name)
{
    static const QRegularExpression painted(QStringLiteral(
        "^(templates/.*\\.style|svg/(images|marks|movies)/.*\\.svg|svg/states/(?!removed).*\\.css)$"));
    return painted.match(name).hasMatch();
}

bool copyFile(const QString& source, const QString& target)
{
    // An installed theme may be nobody's to write to.
    return QDir().mkpath(QFileInfo(target).path()) && QFile::copy(source, target)
        && QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner | QFile::WriteUser);
}

bool rewrite(const QString& path, const QString& text)
{
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool copyTheme(const QDir& source, const QDir& target, const Painter& painter)
{
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString name = source.relativeFilePath(path);
        const QString copy = target.filePath(name);
        if (!copyFile(path, copy)) {
            return false;
        }
        const QString text = name == paletteFile ? painter.paintedPalette(contentOf(path))
            : isPainted(name)                    ? painter.painted(contentOf(path))
                                                 : QString();
        if (!text.isEmpty() && !rewrite(copy, text)) {
            return false;
        }
    }
    return true;
}

QString drawImages(const QString& folder)
{
    QProcess render;
    render.setWorkingDirectory(folder);
    render.setProcessChannelMode(QProcess::ForwardedChannels);
    render.start(QStringLiteral("bash"), { QStringLiteral("render") });
    return render.waitForFinished(-1) && render.exitCode() == 0
        ? QString()
        : QStringLiteral("The images could not be drawn: ./render failed in %1").arg(folder);
}

QString whatIsMissing(const QDir& source)
{
    for (const char* program : { "bash", "rsvg-convert" }) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty()) {
            return QStringLiteral("%1 is missing, which draws the images (Debian: librsvg2-bin)")
                .arg(QLatin1String(program));
        }
    }
    return source.exists(QStringLiteral("render")) && source.exists(QStringLiteral("svg"))
        ? QString()
        : QStringLiteral("%1 has no sources of its images: the folder svg and the script render")
              .arg(source.path());
}

QString unknownColour(const Palette& palette, const Colours& colours)
{
    for (const QString& name : colours.keys()) {
        if (std::none_of(
                palette.begin(), palette.end(), [&name](const auto& entry) { return entry.first == name; })) {
            return name;
        }
    }
    return {};
}

} // namespace

QString makeTheme(const QString& source, const QString& folder, const Colours& colours)
{
    const QDir from(source);
    if (!from.exists(QStringLiteral("images.json"))) {
        return QStringLiteral("There is no theme in %1").arg(source);
    }
    if (QFileInfo::exists(folder) && !QDir(folder).isEmpty()) {
        return QStringLiteral("%1 is not empty").arg(folder);
    }
    const Palette palette = paletteOf(contentOf(from.filePath(paletteFile)));
    const QString unknown = unknownColour(palette, colours);
    if (!unknown.isEmpty()) {
        return QStringLiteral("The theme in %1 has no colour \"%2\"").arg(source, unknown);
    }
    const QString missing = colours.isEmpty() ? QString() : whatIsMissing(from);
    if (!missing.isEmpty()) {
        return missing;
    }
    if (!copyTheme(from, QDir(folder), Painter(palette, withShades(colours)))) {
        return QStringLiteral("%1 cannot be written").arg(folder);
    }
    return colours.isEmpty() ? QString() : drawImages(folder);
}
