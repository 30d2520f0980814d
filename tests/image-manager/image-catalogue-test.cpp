#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <QPixmapCache>
#include <QtTest>
#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <share.h>
#endif

namespace {

const auto bothTypes = { ImageManager::EagerLoad, ImageManager::LazyLoad };
const char* const suffixes[] { "", "_hover", "_click", "_disable" };
const QColor stateColors[] { Qt::black, Qt::green, Qt::blue, Qt::red };

QColor colorOf(const QString& name, int state = ImageManager::Normal)
{
    const QPixmap pixmap = getGlobalImage(name, ImageManager::ImageType(state));
    return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(4, 4);
}

// Scaled smoothly, fine black and white is grey.
bool isGrey(const QImage& image)
{
    const int grey = image.pixelColor(image.rect().center()).red();
    return grey > 40 && grey < 215;
}

} // namespace

class ImageCatalogueTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void sizes()
    {
        // Of the file; of the copy for style sheets and, in logical pixels, of the pixmap, by the scale.
        const QVector<QSize> rows[] { { { 64, 48 }, { 16, 12 }, { 20, 15 }, { 24, 18 }, { 32, 24 } },
            { { 50, 30 }, { 13, 8 }, { 16, 10 }, { 20, 12 }, { 26, 16 } },
            { { 101, 6 }, { 25, 1 }, { 31, 1 }, { 38, 2 }, { 50, 2 } },
            { { 1, 1 }, { 0, 0 }, { 0, 0 }, { 0, 0 }, { 0, 0 } } };
        for (const QVector<QSize>& row : rows) {
            const QSize display = displayscale::pick(row[1], row[2], row[3], row[4]);
            const ThemeFolder theme;
            theme.writeList({ "sized" }, { "sized" });
            QImage stripes(row[0], QImage::Format_RGB32);
            for (int i = 0; i < stripes.width() * stripes.height(); ++i) {
                const int x = i % stripes.width();
                stripes.setPixelColor(x, i / stripes.width(), x % 2 ? Qt::black : Qt::white);
            }
            QVERIFY(stripes.save(theme.path("images/sized.png")));
            for (const auto type : bothTypes) {
                theme.initializeImages(type);
                const QPixmap pixmap = getGlobalImage("sized");
                QCOMPARE(pixmap.size(), display * displayscale::ratio());
                QCOMPARE(theme.temporaryImage("sized").size(), display);
                QVERIFY(display.isEmpty() || pixmap.devicePixelRatio() == displayscale::ratio());
                QVERIFY(
                    display.isEmpty() || (isGrey(pixmap.toImage()) && isGrey(theme.temporaryImage("sized"))));
            }
        }
    }

    void states()
    {
        for (const auto type : bothTypes) {
            for (const QByteArray files : { "0123", "02", "1", "" }) { // the states that have one
                const ThemeFolder theme;
                theme.writeList({ "icon", "icon" });
                theme.write("images/icon_click.png", "no picture"); // and so none that counts
                for (const char state : files) {
                    theme.writeImage(
                        QString("icon") + suffixes[state - '0'], { 32, 32 }, stateColors[state - '0']);
                }
                theme.initializeImages(type);
                for (const int state : { 1, 0, 2, 3, 4 }) {
                    const bool hasFile = files.contains(char('0' + state));
                    if (!hasFile) {
                        const QString text = "Cannot load pixmap \"icon\" with type %1 [use default icon]";
                        log.expect(text.arg(state));
                    }
                    const QColor normal = files.startsWith('0') ? stateColors[0] : QColor();
                    QCOMPARE(colorOf("icon", state), hasFile ? stateColors[state] : normal);
                }
            }
        }
        log.expect("Cannot load pixmap \"Icon\"");
        log.expect("Cannot load pixmap \"icon_hover\"");
        QVERIFY(getGlobalImage("Icon").isNull());
        QVERIFY(getGlobalImage(QString("icon_hover"), ImageManager::Hover).isNull());
    }

    void loadsWhen()
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
    void temporaryImages()
    {
        const ThemeFolder theme;
        theme.writeList({}, { "arrow up", "gone" });
        theme.writeImage("arrowup", { 40, 24 }, Qt::red);
        QFile arrow(theme.userFolder() + "/tmp_images/tmp_arrowup.png");
        QFile gone(theme.userFolder() + "/tmp_images/tmp_gone.png");
        theme.initializeImages(ImageManager::LazyLoad);
        QCOMPARE(theme.temporaryImage("arrowup").pixelColor(1, 1), QColor(Qt::red));
        const qint64 size = arrow.size();
        for (QFile* file : { &arrow, &gone }) {
            QVERIFY(file->exists() && file->resize(5000));
        }
#ifdef Q_OS_WIN // where a program may keep a file to itself, which stays as it is then
        const auto* const path = reinterpret_cast<const wchar_t*>(arrow.fileName().utf16());
        const int kept = _wsopen(path, _O_RDONLY, _SH_DENYRW);
        theme.initializeImages(ImageManager::LazyLoad);
        QVERIFY(_close(kept) == 0 && arrow.size() == 5000 && gone.size() == 0 && gone.resize(5000));
#endif
        theme.initializeImages(ImageManager::LazyLoad);
        QCOMPARE(arrow.size(), size);
        QCOMPARE(gone.size(), qint64(0));
        log.expect("Cannot load pixmap \"arrowup\"");
        QVERIFY(getGlobalImage("arrowup").isNull());
    }

    void badUserFolder()
    {
        for (const char* const blocked : { "../user", "../user/data/tmp_images/tmp_plain.png/x" }) {
            const ThemeFolder theme;
            theme.write(blocked, "in the way");
            theme.writeImage("plain", { 32, 32 });
            theme.writeList({ "plain" }, { "plain" });
            theme.initializeImages(ImageManager::EagerLoad);
            QVERIFY(!getGlobalImage("plain").isNull() && theme.temporaryImage("plain").isNull());
        }
    }

    void badList()
    {
        // Entries outlive the list, so every row lists a name of its own.
        const QPair<QByteArray, bool> rows[] { { R"({ "images": { "1": "" }, "tmp_images": 5 })", false },
            { R"({ "images": [1, null, [], "2", {}] })", true },
            { QByteArray("{ \"images\": [\"3\"] }\0 behind", 27), true },
            { "{ \"images\": [\"\xff\xfe\", \"4\"] }", true } };
        int name = 0;
        for (const auto& [json, listed] : rows) {
            const ThemeFolder theme;
            theme.writeImage(QString::number(++name), { 32, 32 });
            theme.write("images.json", json);
            theme.initializeImages(ImageManager::LazyLoad);
            log.expect(QString("Cannot load pixmap \"%1\"").arg(name), listed ? 0 : 1);
            QCOMPARE(getGlobalImage(QString::number(name)).isNull(), !listed);
        }
    }
};

QTEST_MAIN(ImageCatalogueTest)

#include "image-catalogue-test.moc"
