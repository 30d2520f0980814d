#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <QDir>
#include <QImageReader>
#include <QPixmapCache>
#include <QtTest>

class ImageCatalogueTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data();
    void sizes();
    void states_data();
    void states();
    void loadsWhen();
    void temporaryImages();
    void badUserFolder();
    void badList_data();
    void badList();
};

namespace {

const auto bothTypes = { ImageManager::EagerLoad, ImageManager::LazyLoad };
const char* const suffixes[] { "", "_hover", "_click", "_disable" };
const QColor stateColors[] { Qt::black, Qt::green, Qt::blue, Qt::red };

QColor colorOf(const QString& name, ImageManager::ImageType state = ImageManager::Normal)
{
    const QPixmap pixmap = getGlobalImage(name, state);
    return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(4, 4);
}

} // namespace

void ImageCatalogueTest::sizes_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSize>("display"); // of the file for style sheets, and of the pixmap in logical pixels
    const auto row = [](const char* name, QSize source, QSize at96, QSize at120, QSize at144, QSize at192) {
        QTest::newRow(name) << source << displayscale::pick(at96, at120, at144, at192);
    };
    row("even", { 64, 48 }, { 16, 12 }, { 20, 15 }, { 24, 18 }, { 32, 24 });
    row("rounded twice", { 50, 30 }, { 13, 8 }, { 16, 10 }, { 20, 12 }, { 26, 16 });
    row("keeps its shape", { 101, 6 }, { 25, 1 }, { 31, 1 }, { 38, 2 }, { 50, 2 });
    row("nothing of it is left", { 1, 1 }, { 0, 0 }, { 0, 0 }, { 0, 0 }, { 0, 0 });
}

void ImageCatalogueTest::sizes()
{
    QFETCH(QSize, source);
    QFETCH(QSize, display);
    const ThemeFolder theme;
    theme.writeList({ "sized" }, { "sized" });
    QImage stripes(source, QImage::Format_RGB32);
    for (int x = 0; x < source.width(); ++x) {
        for (int y = 0; y < source.height(); ++y) {
            stripes.setPixelColor(x, y, x % 2 ? Qt::black : Qt::white);
        }
    }
    QVERIFY(stripes.save(theme.path("images/sized.png")));
    for (const auto type : bothTypes) {
        theme.initializeImages(type);
        const QPixmap pixmap = getGlobalImage("sized");
        QCOMPARE(pixmap.size(), display * displayscale::ratio());
        QVERIFY(display.isEmpty() || pixmap.devicePixelRatio() == displayscale::ratio());
        // Scaled smoothly, fine black and white is grey.
        const auto isGrey = [](const QImage& image) {
            const int grey = image.pixelColor(image.rect().center()).red();
            return grey > 40 && grey < 215;
        };
        QVERIFY(display.isEmpty() || (isGrey(pixmap.toImage()) && isGrey(theme.temporaryImage("sized"))));
    }
    QCOMPARE(theme.temporaryImage("sized").size(), display);
}

void ImageCatalogueTest::states_data()
{
    QTest::addColumn<bool>("eager");
    QTest::addColumn<QByteArray>("files"); // the states that have one
    for (const char* files : { "0123", "02", "1", "" }) {
        QTest::addRow("eager, %s", files) << true << QByteArray(files);
        QTest::addRow("lazy, %s", files) << false << QByteArray(files);
    }
}

void ImageCatalogueTest::states()
{
    QFETCH(bool, eager);
    QFETCH(QByteArray, files);
    const ThemeFolder theme;
    theme.writeList({ "icon", "icon" });
    theme.write("images/icon_click.png", "no picture"); // and so none that counts
    for (const char state : qAsConst(files)) {
        theme.writeImage(QString("icon") + suffixes[state - '0'], { 32, 32 }, stateColors[state - '0']);
    }
    theme.initializeImages(eager ? ImageManager::EagerLoad : ImageManager::LazyLoad);
    const QColor normal = files.startsWith('0') ? stateColors[ImageManager::Normal] : QColor();
    for (const auto state :
        { ImageManager::Hover, ImageManager::Normal, ImageManager::Click, ImageManager::Disable }) {
        const bool hasFile = files.contains(char('0' + state));
        if (!hasFile) {
            log.expect(QString("Cannot load pixmap \"icon\" with type %1 [use default icon]").arg(state));
        }
        QCOMPARE(colorOf("icon", state), hasFile ? stateColors[state] : normal);
    }
    log.expect("Cannot load pixmap \"Icon\"");
    log.expect("Cannot load pixmap \"icon_hover\"");
    QVERIFY(getGlobalImage("Icon").isNull());
    QVERIFY(getGlobalImage(QString("icon_hover"), ImageManager::Hover).isNull());
}

void ImageCatalogueTest::loadsWhen()
{
    for (const auto type : bothTypes) {
        const ThemeFolder theme;
        theme.writeList({ "late", "kept" });
        for (const char* const name : { "late", "late_hover", "kept" }) {
            theme.writeImage(name, { 32, 32 }, Qt::black);
        }
        theme.initializeImages(type);
        theme.writeImage("late", { 32, 32 }, Qt::yellow);
        QPixmapCache::clear(); // where files of the same second and size are the same
        const QColor first = type == ImageManager::EagerLoad ? Qt::black : Qt::yellow;
        QCOMPARE(colorOf("late"), first);

        // From here on the files are not looked at again, in any state ...
        theme.writeImage("late", { 32, 32 }, Qt::magenta);
        QPixmapCache::clear();
        QVERIFY(QFile::remove(theme.path("images/late_hover.png")));
        QCOMPARE(colorOf("late"), first);
        QCOMPARE(colorOf("late", ImageManager::Hover), QColor(Qt::black));
        // ... but for what the next list names.
        theme.writeList({ "late" });
        theme.initializeImages(type);
        QCOMPARE(colorOf("kept"), QColor(Qt::black));
        log.expect("Cannot load pixmap \"late\" with type 1 [use default icon]");
        QCOMPARE(colorOf("late", ImageManager::Hover), QColor(Qt::magenta));
    }
}

/** What an earlier start has left is gone, down to the last byte. */
void ImageCatalogueTest::temporaryImages()
{
    const ThemeFolder theme;
    theme.writeList({}, { "arrow up", "gone" });
    theme.writeImage("arrowup", { 40, 24 }, Qt::red);
    const QString files[] { "../user/data/tmp_images/tmp_arrowup.png",
        "../user/data/tmp_images/tmp_gone.png" };
    qint64 size = 0;
    for (const auto type : bothTypes) {
        theme.initializeImages(type);
        QCOMPARE(QImageReader::imageFormat(theme.path(files[0])), QByteArray("png"));
        QCOMPARE(theme.temporaryImage("arrowup").pixelColor(1, 1), QColor(Qt::red));
        QVERIFY(QFile::exists(theme.path(files[1])) && QFile(theme.path(files[1])).size() == 0);
        QVERIFY(size == 0 || size == QFile(theme.path(files[0])).size());
        size = QFile(theme.path(files[0])).size();
        theme.write(files[0], QByteArray(5000, 'x'));
        theme.write(files[1], QByteArray(5000, 'x'));
    }
    log.expect("Cannot load pixmap \"arrowup\"");
    QVERIFY(getGlobalImage("arrowup").isNull());
}

void ImageCatalogueTest::badUserFolder()
{
    for (const char* const blocked : { "../user", "../user/data/tmp_images/tmp_plain.png/x" }) {
        const ThemeFolder theme;
        QVERIFY(QDir().mkpath(QFileInfo(theme.path(blocked)).path()));
        theme.write(blocked, "in the way");
        theme.writeImage("plain", { 32, 32 });
        theme.writeList({ "plain" }, { "plain" });
        theme.initializeImages(ImageManager::EagerLoad);
        QVERIFY(!getGlobalImage("plain").isNull() && theme.temporaryImage("plain").isNull());
    }
}

void ImageCatalogueTest::badList_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("listed");
    const QByteArray good = R"({ "images": ["good"] })";
    QTest::newRow("no JSON") << QByteArray("images: good") << false;
    QTest::newRow("other values") << QByteArray(R"({ "images": { "good": "" }, "tmp_images": 5 })") << false;
    QTest::newRow("wrong elements") << QByteArray(R"({ "images": [1, null, [], "good", {}] })") << true;
    QTest::newRow("NUL behind") << good + '\0' + "no JSON" << true;
    QTest::newRow("no UTF-8") << QByteArray(R"({ "images": ["\xff\xfe", "good"] })") << true;
}

void ImageCatalogueTest::badList()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, listed);
    // Entries outlive the list, so every row takes a name of its own.
    const QByteArray name = "good" + QByteArray(QTest::currentDataTag()).replace(' ', '_');
    const ThemeFolder theme;
    theme.writeImage(name, { 32, 32 });
    theme.write("images.json", json.replace("\"good\"", '"' + name + '"'));
    theme.initializeImages(ImageManager::LazyLoad);
    if (!listed) {
        log.expect("Cannot load pixmap \"" + name + '"');
    }
    QCOMPARE(getGlobalImage(name.constData()).isNull(), !listed);
}

QTEST_MAIN(ImageCatalogueTest)

#include "image-catalogue-test.moc"
