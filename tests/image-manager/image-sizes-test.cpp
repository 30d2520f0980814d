#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <QtTest>

class ImageSizesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data();
    void sizes();
};

void ImageSizesTest::sizes_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSize>("display"); // of the file for style sheets, and of the pixmap in logical pixels
    const auto row = [](const QSize& source, const QSize& at96, const QSize& at120, const QSize& at144,
                         const QSize& at192) {
        QTest::addRow("%dx%d", source.width(), source.height())
            << source << displayscale::pick(at96, at120, at144, at192);
    };
    row({ 64, 48 }, { 16, 12 }, { 20, 15 }, { 24, 18 }, { 32, 24 });
    row({ 50, 30 }, { 13, 8 }, { 16, 10 }, { 20, 12 }, { 26, 16 });
    row({ 2, 2 }, { 1, 1 }, { 1, 1 }, { 2, 2 }, { 2, 2 });
    // The sides by themselves would give 25 by 2; the shape of the source holds.
    row({ 101, 6 }, { 25, 1 }, { 31, 1 }, { 38, 2 }, { 50, 2 });
    // Less than one pixel of design is no image.
    row({ 1, 1 }, { 0, 0 }, { 0, 0 }, { 0, 0 }, { 0, 0 });
}

void ImageSizesTest::sizes()
{
    QFETCH(QSize, source);
    QFETCH(QSize, display);
    const ThemeFolder theme;
    theme.writeImage("sized", source);
    theme.writeList({ "sized" }, { "sized" });

    for (const auto type : { ImageManager::EagerLoad, ImageManager::LazyLoad }) {
        theme.initializeImages(type);
        const QPixmap pixmap = getGlobalImage("sized");
        QCOMPARE(pixmap.size(), display * displayscale::ratio());
        QVERIFY(display.isEmpty() || pixmap.devicePixelRatio() == displayscale::ratio());
    }
    QCOMPARE(theme.temporaryImageSize("sized"), display);
}

QTEST_MAIN(ImageSizesTest)

#include "image-sizes-test.moc"
