#include "check-images.h"

#include "kit-requests.h"

#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <map>

namespace {

const QString listOfAll = QStringLiteral("images");
const QString listOfStyles = QStringLiteral("tmp_images");
const QLatin1String twice("@2x");

class Checker
{
public:
    Checker(const QDir& folder, const JsonFile& list, Findings& findings)
        : m_folder(folder)
        , m_list(list)
        , m_images(list.array(listOfAll))
        , m_style_images(list.array(listOfStyles).replaceInStrings(QStringLiteral(" "), QString()))
        , m_findings(findings)
    { }

    void checkUrl(const QString& url, bool isQuoted, const Place& place);
    void checkImages();
    void checkStyleImages();
    void checkFiles();

private:
    void checkStates(const QString& name, const Place& place);
    QImage image(const QString& file, const Place& place);

    void tell(const Place& place, const QString& text) { m_findings.push_back({ place, text }); }

    QDir m_folder;
    const JsonFile& m_list;
    QStringList m_images;
    QStringList m_style_images;
    QSet<QString> m_named; // by style sheets
    std::map<QString, QImage> m_files; // by their names, as far as they were asked for
    Findings& m_findings;
};

/** An image, which is told of the first time, at @p place if there is no file. */
QImage Checker::image(const QString& file, const Place& place)
{
    const auto [entry, isNew] = m_files.emplace(file, QImage());
    if (isNew) {
        const QString path = m_folder.filePath(file);
        entry->second = QImage(path);
        if (!QFile::exists(path)) {
            tell(place, QStringLiteral("there is no file %1").arg(file));
        } else if (entry->second.isNull()) {
            tell({ file, 0 }, QStringLiteral("is no image"));
        } else if (entry->second.width() % 4 != 0 || entry->second.height() % 4 != 0) {
            tell({ file, 0 },
                QStringLiteral("is %1 by %2, which are no multiples of four")
                    .arg(entry->second.width())
                    .arg(entry->second.height()));
        }
    }
    return entry->second;
}

QStringList withoutDuplicates(QStringList names)
{
    names.removeDuplicates();
    return names;
}

QString fileOf(const QString& name)
{
    return QStringLiteral("images/%1.png").arg(name);
}

// Qt takes some letters, which the folder that a token stands for may have, in quotes only.
void Checker::checkUrl(const QString& url, bool isQuoted, const Place& place)
{
    static const QRegularExpression made(QStringLiteral("^TMPIMG_LOC/tmp_(.*)\\.png$"));
    static const QRegularExpression resource(QStringLiteral("^(:|qrc:|//)"));
    static const QRegularExpression folderOfImages(QStringLiteral("^IMG_LOC"));
    if (!isQuoted && url.contains(QLatin1String("IMG_LOC"))) {
        tell(place, QStringLiteral("%1 has to stand in quotes").arg(url));
    }
    const auto match = made.match(url);
    if (match.hasMatch()) {
        m_named << match.captured(1);
        if (!m_style_images.contains(match.captured(1))) {
            tell(place,
                QStringLiteral("nobody makes %1, as \"%2\" is not in \"tmp_images\"")
                    .arg(url, match.captured(1)));
        }
    } else if (url.contains(folderOfImages)) {
        image(QString(url).replace(folderOfImages, listOfAll), place);
    } else if (!url.contains(resource) && !QFile::exists(url)) {
        tell(place, QStringLiteral("there is no file %1").arg(url));
    }
}

void Checker::checkImages()
{
    for (const QString& name : kitrequests::images()) {
        if (!m_images.contains(name)) {
            tell({ m_list.name, 0 }, QStringLiteral("\"images\" lacks \"%1\"").arg(name));
        }
    }
    for (const QString& name : withoutDuplicates(m_images)) {
        const Place place = m_list.placeOfElement(listOfAll, name);
        if (m_images.count(name) > 1) {
            tell(place, QStringLiteral("\"%1\" stands twice in \"images\"").arg(name));
        }
        if (!kitrequests::images().contains(name)) {
            tell(place, QStringLiteral("nobody asks for \"%1\"").arg(name));
        }
        checkStates(name, place);
    }
}

void Checker::checkStates(const QString& name, const Place& place)
{
    const QImage rest = image(fileOf(name), place);
    for (const char* suffix : { "_hover", "_click", "_disable" }) {
        const QString file = fileOf(name + QLatin1String(suffix));
        if (!kitrequests::hasFourStates(name) && !m_folder.exists(file)) {
            continue;
        }
        const QImage state = image(file, place);
        if (!state.isNull() && state.size() != rest.size()) {
            tell({ file, 0 }, QStringLiteral("is not as large as the image at rest"));
        } else if (!state.isNull() && state == rest) {
            tell({ file, 0 }, QStringLiteral("looks like the image at rest"));
        }
    }
}

void Checker::checkStyleImages()
{
    for (const QString& name : withoutDuplicates(m_style_images)) {
        const Place place = m_list.placeOfElement(listOfStyles, name);
        if (m_style_images.count(name) > 1) {
            tell(place, QStringLiteral("\"%1\" stands twice in \"tmp_images\"").arg(name));
        }
        const QSize size = image(fileOf(name), place).size();
        if (name.endsWith(twice)) {
            continue;
        }
        if (!m_named.contains(name)) {
            tell(place, QStringLiteral("no style sheet asks for \"%1\"").arg(name));
        }
        const QString large = name + twice;
        if (!m_style_images.contains(large)) {
            tell(place, QStringLiteral("\"%1\" is missing, for a pixel ratio of 2").arg(large));
            continue;
        }
        const QImage other = image(fileOf(large), place);
        if (!other.isNull() && other.size() != size * 2) {
            tell({ fileOf(large), 0 }, QStringLiteral("is not twice as large as %1.png").arg(name));
        }
    }
}

void Checker::checkFiles()
{
    for (const QString& kind : kitrequests::fileTypes()) {
        image(QStringLiteral("filetypes/%1.png").arg(kind), { QStringLiteral("filetypes"), 0 });
        image(QStringLiteral("filetypes/%1_removed.png").arg(kind), { QStringLiteral("filetypes"), 0 });
    }
    const QString movie = QStringLiteral("images/processing.gif");
    image(movie, { movie, 0 });
    for (const QString& subfolder : { listOfAll, QStringLiteral("filetypes") }) {
        for (const QString& name : QDir(m_folder.filePath(subfolder)).entryList(QDir::Files)) {
            const QString file = subfolder + QLatin1Char('/') + name;
            if (m_files.count(file) == 0) {
                tell({ file, 0 }, QStringLiteral("nobody asks for this file"));
            }
        }
    }
}

} // namespace

void checkImages(
    const QDir& folder, const JsonFile& list, const std::vector<Section>& sections, Findings& findings)
{
    static const QRegularExpression url(QStringLiteral("url\\(\\s*([\"']?)([^)\"']*?)[\"']?\\s*\\)"));
    Checker checker(folder, list, findings);
    for (const Section& section : sections) {
        for (const TemplateLine& line : section.lines) {
            for (auto match = url.globalMatch(line.text); match.hasNext();) {
                const auto found = match.next();
                checker.checkUrl(found.captured(2), !found.captured(1).isEmpty(), line.place);
            }
        }
    }
    checker.checkImages();
    checker.checkStyleImages();
    checker.checkFiles();
}
