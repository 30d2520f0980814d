#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QImage>
#include <QLayout>
#include <QPainter>
#include <QtTest>

/** The panel with its shadow, and the mask that it lies in, with images of one colour each. */
class SheetFrameTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void missingImages();
    void shadow();
    void content();
    void masks();
    void masksWithoutWidgets();
    void maskFollowsContent();
    void maskOutlivesContent();
};

namespace {

struct PlainSheet : VantSheet
{
    using VantSheet::VantSheet;

    void showSheet() override { show(); }
};

/** One piece of the shadow, with a place on it for either half of its image. */
struct Piece
{
    const char* name;
    QPoint first;
    QPoint second;
};

int shadowWidth()
{
    return displayscale::pick(22, 27, 33, 44);
}

/** Two colours that only the image with this index has. */
QColor colour(int index, bool second)
{
    return { 20 + 25 * index, second ? 200 : 100, 60 };
}

QList<Piece> pieces(const QSize& size)
{
    const int s = shadowWidth();
    const int right = size.width() - s, bottom = size.height() - s;
    const int left = s + 1, top = s + 1, farRight = right - 2, farBottom = bottom - 2;
    return {
        { "lt", { 0, 0 }, { s - 1, 0 } },
        { "rt", { right, s - 1 }, { right + s - 1, 0 } },
        { "lb", { 0, bottom }, { s - 1, bottom + s - 1 } },
        { "rb", { right, bottom }, { right + s - 1, bottom + s - 1 } },
        { "l", { 0, top }, { s - 1, farBottom } },
        { "r", { right, top }, { right + s - 1, farBottom } },
        { "t", { left, 0 }, { farRight, s - 1 } },
        { "b", { left, bottom }, { farRight, bottom + s - 1 } },
    };
}

QImage render(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace

/** Before there are any. */
void SheetFrameTest::missingImages()
{
    const ThemeFolder empty;
    empty.writeList({});
    empty.initializeImages(ImageManager::LazyLoad);
    debug_message.setEnabled(QtWarningMsg, false);
    QWidget window;
    PlainSheet sheet(&window);
    sheet.resize(200, 150);
    const QImage image = render(sheet);
    debug_message.setEnabled(QtWarningMsg, true);
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::black));
    QCOMPARE(image.pixelColor(sheet.contentsRect().topLeft()), QColor(Qt::white));
}

void SheetFrameTest::shadow()
{
    // Each image has its first colour on the left and its second one on the right.
    const ThemeFolder theme;
    QStringList names;
    const QList<Piece> all = pieces({ 200, 150 });
    for (int i = 0; i < all.size(); ++i) {
        const QString name = QStringLiteral("bg_tutorial_") + QLatin1String(all[i].name);
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(colour(i, false));
        QPainter(&image).fillRect(8, 0, 8, 16, colour(i, true));
        QVERIFY(image.save(theme.path(QStringLiteral("images/%1.png").arg(name))));
        names += name;
    }
    theme.writeList(names);
    theme.initializeImages(ImageManager::EagerLoad);

    QWidget window;
    PlainSheet sheet(&window);
    const int s = shadowWidth();
    sheet.resize(200, 150);
    QCOMPARE(sheet.contentsRect(), QRect(s, s, 200 - 2 * s, 150 - 2 * s));
    const QImage image = render(sheet);
    for (int i = 0; i < all.size(); ++i) {
        QVERIFY2(image.pixelColor(all[i].first) == colour(i, false)
                && image.pixelColor(all[i].second) == colour(i, true),
            all[i].name);
    }
    for (const QPoint& corner : { sheet.contentsRect().topLeft(), sheet.contentsRect().bottomRight() }) {
        QCOMPARE(image.pixelColor(corner), QColor(Qt::white));
    }
    // The long images are stretched, not repeated.
    QCOMPARE(image.pixelColor(s + (200 - 2 * s) / 4, 0), colour(6, false));
    QCOMPARE(image.pixelColor(s + (200 - 2 * s) * 3 / 4, 0), colour(6, true));
}

void SheetFrameTest::content()
{
    QWidget window;
    window.resize(400, 300);
    PlainSheet sheet(&window);
    const QPointer<QWidget> first = new QWidget;
    auto* second = new QWidget;
    first->setFixedSize(50, 40);
    second->setFixedSize(80, 30);
    sheet.setWidget(first);
    sheet.setWidget(second);
    QCOMPARE(first->parentWidget(), &sheet);
    QCOMPARE(sheet.layout()->count(), 1);
    sheet.resize(300, 250);
    window.show();
    QCOMPARE(second->size(), QSize(80, 30));
    QVERIFY((second->geometry().center() - sheet.contentsRect().center()).manhattanLength() <= 2);
}

void SheetFrameTest::masks()
{
    QWidget window;
    window.resize(500, 400);
    QWidget inner(&window);
    inner.resize(100, 100);
    const QColor colours[] { VantMask(new QWidget, &window).palette().color(QPalette::Window), Qt::red };
    QCOMPARE(colours[0], QColor(0, 0, 0, 20));
    for (QWidget* parent : { &window, &inner }) {
        auto* sheet = new PlainSheet(parent);
        sheet->setFixedSize(200, 100);
        // Without a parent, that of the sheet.
        QCOMPARE(VantMask::createMask(sheet, nullptr, Qt::red), sheet);
        auto* mask = qobject_cast<VantMask*>(sheet->parentWidget());
        QVERIFY(mask && mask->isHidden());
        QCOMPARE(mask->parentWidget(), parent);
        QCOMPARE(mask->size(), window.size()); // whatever the parent's
        QCOMPARE(mask->palette().color(QPalette::Window), QColor(Qt::red));
        window.show();
        QVERIFY(mask->isHidden());
        sheet->show();
        QVERIFY(mask->isVisible());
        QCOMPARE(mask->grab().toImage().pixelColor(1, 1), QColor(Qt::red));
        window.resize(600, 450);
        parent->resize(parent->size() + QSize(1, 1)); // which is what an inner one is watched for
        QCOMPARE(mask->size(), window.size());
        QCoreApplication::processEvents();
        QVERIFY((sheet->geometry().center() - mask->rect().center()).manhattanLength() <= 2);
        sheet->hide();
    }
}

void SheetFrameTest::masksWithoutWidgets()
{
    QWidget window;
    QCOMPARE(VantMask::createMask(nullptr, &window), nullptr);
    PlainSheet orphan(nullptr);
    QCOMPARE(VantMask::createMask(&orphan, nullptr), nullptr);
    QVERIFY(!window.findChild<VantMask*>() && !orphan.parent());
}

void SheetFrameTest::maskFollowsContent()
{
    QWidget window;
    window.resize(500, 400);
    window.show();
    PlainSheet sheet(&window);
    VantMask::createMask(&sheet, &window);
    QWidget* mask = sheet.parentWidget();
    auto* newcomer = new QWidget(&window); // over the mask
    newcomer->setGeometry(window.rect());
    newcomer->show();
    for (int i = 0; i < 3; ++i) {
        sheet.showSheet();
        QVERIFY(mask->isVisible() && sheet.isVisible());
        QCOMPARE(window.childAt(1, 1), mask);
        sheet.hide();
        QVERIFY(mask->isHidden());
        QCOMPARE(window.childAt(1, 1), newcomer);
    }
    // A window that hides and shows leaves an open sheet open, and a closed one closed.
    for (const bool open : { true, false }) {
        sheet.setVisible(open);
        window.hide();
        window.show();
        QCOMPARE(mask->isVisible(), open);
        QCOMPARE(sheet.isVisible(), open);
    }
}

void SheetFrameTest::maskOutlivesContent()
{
    QWidget window;
    window.show();
    auto* sheet = new PlainSheet(&window);
    VantMask::createMask(sheet, &window);
    QWidget* mask = sheet->parentWidget();
    sheet->show();
    delete sheet;
    QVERIFY(mask->isHidden());

    // A content that was moved to another mask has nothing more to do with this one.
    PlainSheet moved(&window);
    VantMask::createMask(&moved, &window);
    QWidget* former = moved.parentWidget();
    moved.show();
    VantMask::createMask(&moved, &window);
    moved.show();
    QVERIFY(former->isHidden());
    QVERIFY(moved.isVisible());
    delete former;
    QVERIFY(moved.isVisible());
}

QTEST_MAIN(SheetFrameTest)

#include "sheet-frame-test.moc"
