#include "bench.h"
#include "child-process.h"
#include "families.h"
#include "made-up-theme.h"

#include <vantkit-qt/image-manager/image-manager.h>
#include <vantkit-qt/utils/dpi-info.h>

#include <QByteArrayList>
#include <QCryptographicHash>
#include <QPixmapCache>

#include <memory>
#include <utility>

namespace bench {

namespace {

const QString eagerChild = QStringLiteral("initialize-eager");
const QString lazyChild = QStringLiteral("initialize-lazy");
const QString bareChild = QStringLiteral("load-and-scale");

QString digest(const std::vector<QPixmap>& pixmaps)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const QPixmap& pixmap : pixmaps) {
        const QImage image = pixmap.toImage();
        const void* const pixels = image.constBits();
        hash.addData(static_cast<const char*>(pixels), static_cast<int>(image.sizeInBytes()));
    }
    return QString::fromLatin1(hash.result().toHex());
}

std::vector<QPixmap> wholeCatalogue()
{
    std::vector<QPixmap> pixmaps;
    const QStringList names = MadeUpTheme::imageNames();
    for (const QString& name : names) {
        for (int state = ImageManager::Normal; state <= ImageManager::Disable; ++state) {
            pixmaps.push_back(getGlobalImage(name, static_cast<ImageManager::ImageType>(state)));
        }
    }
    return pixmaps;
}

ChildResult initialize(const QString& folder, ImageManager::InitializeType type)
{
    MadeUpTheme::makeCurrent(folder);
    DPIinfo::getInstance();
    const double nanoseconds = nanosecondsOf([type] { ImageManager::getInstance().initialize(type); });
    return { nanoseconds, digest(wholeCatalogue()) };
}

ChildResult loadAndScale(const QString& folder)
{
    const QStringList files = MadeUpTheme::imageFiles(folder);
    const double dpi = DPIinfo::getInstance().getDPI();
    const double dpr = DPIinfo::getInstance().getDPR();
    std::vector<QPixmap> pixmaps;
    pixmaps.reserve(static_cast<std::size_t>(files.size()));
    const double nanoseconds = nanosecondsOf([&] {
        for (const QString& file : files) {
            const QPixmap source(file);
            const QSize size(qRound(qRound(qRound(source.width() * 0.25) * dpi) * dpr),
                qRound(qRound(qRound(source.height() * 0.25) * dpi) * dpr));
            pixmaps.push_back(source.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            pixmaps.back().setDevicePixelRatio(dpr);
        }
    });
    return { nanoseconds, digest(pixmaps) };
}

// Each start in a process of its own: an application initializes once, with nothing cached.
Sampler childrenInTurn(const QString& kit, const QString& alternative)
{
    const auto theme = std::make_shared<MadeUpTheme>();
    requireSameWork(runChild(kit, theme->path()).check == runChild(alternative, theme->path()).check);
    const auto inFreshProcess = [theme](const QString& child) {
        return [theme, child] { return runChild(child, theme->path()).amount; };
    };
    return interleaved(inFreshProcess(kit), inFreshProcess(alternative));
}

// The names as they stand in the kit's catalogue and in Qt's cache of pixmaps, all loaded.
QStringList loadedNames(ImageManager::InitializeType type)
{
    MadeUpTheme::current();
    ImageManager::getInstance().initialize(type);
    wholeCatalogue();
    QPixmapCache::clear(); // of the source files, which Qt puts there while they are read
    QStringList names = MadeUpTheme::imageNames();
    for (const QString& name : std::as_const(names)) {
        QPixmapCache::insert(name, getGlobalImage(name));
    }
    for (const QString& name : std::as_const(names)) {
        QPixmap cached;
        requireSameWork(
            QPixmapCache::find(name, &cached) && cached.cacheKey() == getGlobalImage(name).cacheKey());
    }
    return names;
}

Action findInCache(const QStringList& names)
{
    return [names] {
        for (const QString& name : names) {
            QPixmap pixmap;
            QPixmapCache::find(name, &pixmap);
        }
    };
}

Sampler lookUpByString(ImageManager::InitializeType type)
{
    const QStringList names = loadedNames(type);
    const auto kit = [names] {
        for (const QString& name : names) {
            const QPixmap pixmap = getGlobalImage(name, ImageManager::Normal);
        }
    };
    return interleaved(repeated(kit, names.size()), repeated(findInCache(names), names.size()));
}

Sampler lookUpByLiteral(ImageManager::InitializeType type)
{
    const QStringList names = loadedNames(type);
    QByteArrayList literals;
    for (const QString& name : names) {
        literals.append(name.toUtf8());
    }
    const auto kit = [literals] {
        for (const QByteArray& name : literals) {
            const QPixmap pixmap = getGlobalImage(name.constData(), ImageManager::Normal);
        }
    };
    return interleaved(repeated(kit, names.size()), repeated(findInCache(names), names.size()));
}

Row initializeRow(const char* name, const char* kit, const QString& kitChild, const char* alternative,
    const QString& alternativeChild, double ceiling)
{
    return { QLatin1String(name), QStringLiteral("200 names of 4 states"), QLatin1String(kit),
        QLatin1String(alternative), ceiling, 41, [=] { return childrenInTurn(kitChild, alternativeChild); } };
}

Row lookUpRow(const char* name, const char* kit, double ceiling, const std::function<Sampler()>& prepare)
{
    return { QLatin1String(name), QStringLiteral("one look-up"), QLatin1String(kit),
        QStringLiteral("QPixmapCache::find of the same key"), ceiling, 501, prepare };
}

} // namespace

void addImageRows(Suite& suite)
{
    suite.children[eagerChild] = [](const QString& folder) {
        return initialize(folder, ImageManager::EagerLoad);
    };
    suite.children[lazyChild] = [](const QString& folder) {
        return initialize(folder, ImageManager::LazyLoad);
    };
    suite.children[bareChild] = loadAndScale;

    suite.rows.push_back(initializeRow("images.initialize-eager", "ImageManager::initialize, eager",
        eagerChild, "a bare loop that loads and scales the same files", bareChild, 1.05));
    suite.rows.push_back(initializeRow("images.initialize-lazy", "ImageManager::initialize, lazy", lazyChild,
        "the same, eager", eagerChild, 0.002));
    suite.rows.push_back(lookUpRow("images.look-up-eager", "getGlobalImage(const QString&), loaded eagerly",
        1.6, [] { return lookUpByString(ImageManager::EagerLoad); }));
    suite.rows.push_back(lookUpRow("images.look-up-lazy", "getGlobalImage(const QString&), loaded lazily",
        1.6, [] { return lookUpByString(ImageManager::LazyLoad); }));
    suite.rows.push_back(
        lookUpRow("images.look-up-literal-eager", "getGlobalImage(const char*), loaded eagerly", 2.2,
            [] { return lookUpByLiteral(ImageManager::EagerLoad); }));
    suite.rows.push_back(
        lookUpRow("images.look-up-literal-lazy", "getGlobalImage(const char*), loaded lazily", 2.2,
            [] { return lookUpByLiteral(ImageManager::LazyLoad); }));
}

} // namespace bench
