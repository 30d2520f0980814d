#include "help/page-files_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPixmap>
#include <QRegularExpression>
#include <QTextStream>
#include <QUrl>

namespace vantkit::internal {

namespace {

const QLatin1String parentForm("../image/"); // how a page names an image, besides its bare name

// A hundred megabytes in memory, more than three large screens; the file of such an image can be tiny.
const qint64 mostPixels = 25'000'000;

// Windows has folders and drives in more than the slash, and its devices lie in every folder. The rule holds
// on all systems.
bool leadsElsewhere(const QString& fileName)
{
    static const QRegularExpression elsewhere(
        QStringLiteral(
            R"([\\:\x00-\x1f]|^(con|prn|aux|nul|conin\$|conout\$|(com|lpt)[0-9\xb9\xb2\xb3]) *(\.|$))"),
        QRegularExpression::CaseInsensitiveOption);
    return elsewhere.match(fileName).hasMatch();
}

/** The path in @p url if it begins neither at a scheme, nor at a host, nor at the root; else empty. */
QString relativePathIn(const QUrl& url)
{
    const QString path = QDir::fromNativeSeparators(url.path(QUrl::FullyDecoded));
    const bool isRelative = url.scheme().isEmpty() && QDir::isRelativePath(path);
    return isRelative && !leadsElsewhere(fileNameOf(path)) ? path : QString();
}

/** The first file of its kind in @p folders: a pipe or a device might never end. */
template <typename PathIn>
QString firstFileIn(const QStringList& folders, PathIn pathIn)
{
    for (const QString& folder : folders) {
        QString path = pathIn(folder);
        if (QFileInfo(path).isFile()) {
            return path;
        }
    }
    return {};
}

} // namespace

QString imageFolder()
{
    return QDir::tempPath() + QStringLiteral("/corvanta_help/image");
}

QString fileNameOf(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

// The way out of the folder and back is how pages name their images. Without a usable name it leads to the
// folder itself, which cannot be written to.
QString savePathOf(const QString& source)
{
    const QString fileName = fileNameOf(source);
    return imageFolder() + QStringLiteral("/../image/") + (leadsElsewhere(fileName) ? QString() : fileName);
}

// In the image folder the source is a name and no URL: it may well hold a percent sign or a question mark.
QString imageFileIn(const QStringList& folders, const QString& image, bool isFetched)
{
    const QString fileName = fileNameOf(image);
    const bool mayBeSaved = isFetched && (image == fileName || image == parentForm + fileName);
    const QString saved = mayBeSaved ? savePathOf(image) : QString();
    const QString relative = relativePathIn(QUrl(image));
    return firstFileIn(folders, [&](const QString& folder) {
        return folder == imageFolder() ? saved : folder + QLatin1Char('/') + relative;
    });
}

QString pageFileIn(const QStringList& folders, const QUrl& link)
{
    const QString relative = QDir::cleanPath(relativePathIn(link));
    if (relative.startsWith(QLatin1String("../"))) {
        return {};
    }
    return firstFileIn(folders, [&](const QString& folder) {
        return folder == imageFolder() ? QString() : folder + QLatin1Char('/') + relative;
    });
}

std::optional<QString> readPage(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    const QString text = stream.readAll();
    return text.left(text.indexOf(QChar::Null)); // all of it, if there is none
}

// The size in an icon file is that of its frame, and not that of the image in it.
QPixmap readImage(QIODevice* content)
{
    static const QList<QByteArray> iconFormats = { "ico", "cur", "icns" };
    QImageReader reader(content);
    if (iconFormats.contains(reader.format())) {
        return {};
    }
    const QSize size = reader.size();
    const bool isOfPage = !size.isEmpty() && qint64(size.width()) * size.height() <= mostPixels;
    return isOfPage ? QPixmap::fromImageReader(&reader) : QPixmap();
}

} // namespace vantkit::internal
