#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QDragEnterEvent>
#include <QImage>
#include <QLayout>
#include <QMimeData>
#include <QPainter>
#include <QtTest>

/** The panel with its shadow, and the mask that it lies in, with images of one colour each. */
class SheetFrameTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void shadow();
    void content();
    void masks();
    void maskFollowsContent();
    void maskOutlivesContent();
};

namespace {

/** A window that things can be dropped on. */
struct DropWindow : QWidget
{
    DropWindow() { setAcceptDrops(true); }

    void dragEnterEvent(QDragEnterEvent* event) override { event->accept(); }

    bool takesDrop(const QPoint& place)
    {
        QMimeData dropped;
        QDragEnterEvent enter(place, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QCoreApplication::sendEvent(windowHandle(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        move.accept(); // as the platform has it after what came in
        QCoreApplication::sendEvent(windowHandle(), &move);
        return move.isAccepted();
    }
};

struct PlainSheet : VantSheet
{
    using VantSheet::VantSheet;

    void showSheet() override { show(); }
};

QImage render(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

bool isCentred(const QWidget& widget, const QPoint& centre)
{
    return (widget.geometry().center() - centre).manhattanLength() <= 2;
}

} // namespace

/** Each edge is drawn with an image of two halves, whose border stays sharp. */
void SheetFrameTest::shadow()
{
    QWidget window;
    PlainSheet sheet(&window);
    sheet.resize(200, 150);
    const ThemeFolder theme;
    theme.initializeImages(ImageManager::LazyLoad);
    debug_message.setEnabled(QtWarningMsg, false);
    QCOMPARE(render(sheet).pixelColor(0, 0), QColor(Qt::black)); // without images
    debug_message.setEnabled(QtWarningMsg, true);

    const QStringList names { "bg_tutorial_lt", "bg_tutorial_t", "bg_tutorial_rt", "bg_tutorial_l", QString(),
        "bg_tutorial_r", "bg_tutorial_lb", "bg_tutorial_b", "bg_tutorial_rb" }; // row by row
    const auto colour = [](int index, int half) {
        return index == 4 ? QColor(Qt::white) : QColor(20 * index, 100, 60 + 100 * half);
    };
    theme.writeList(names);
    for (int i = 0; i < names.size(); ++i) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(colour(i, 1));
        QPainter(&image).fillRect(0, 0, i % 3 == 1 ? 8 : 16, i % 3 == 1 ? 16 : 8, colour(i, 0));
        theme.writeImage(names[i], image.size());
        QVERIFY(image.save(theme.path("images/" + names[i] + ".png")));
    }
    theme.initializeImages(ImageManager::EagerLoad);
    const int shadow = displayscale::pick(22, 27, 33, 44);
    QCOMPARE(sheet.contentsRect(), QRect(shadow, shadow, 200 - 2 * shadow, 150 - 2 * shadow));
    const QImage image = render(sheet);
    const int x[] { 0, shadow, 200 - shadow, 200 };
    const int y[] { 0, shadow, 150 - shadow, 150 };
    for (int i = 0; i < names.size(); ++i) {
        const QPoint first(x[i % 3], y[i / 3]);
        const QPoint last(x[i % 3 + 1] - 1, y[i / 3 + 1] - 1);
        QCOMPARE(image.pixelColor(first), colour(i, 0));
        QCOMPARE(image.pixelColor(last), colour(i, 1));
        const QPoint step = i % 3 == 1 ? QPoint(1, 0) : QPoint(0, 1);
        QSet<QRgb> colours;
        for (QPoint place = first; i % 2 == 1 && place.x() <= last.x() && place.y() <= last.y();
             place += step) {
            colours += image.pixel(place);
        }
        QVERIFY2(colours.size() <= 4, qPrintable(names[i])); // the theme's own scaling may mix two more
    }
}

void SheetFrameTest::content()
{
    QWidget window;
    window.resize(400, 300);
    PlainSheet sheet(&window);
    QWidget* second = nullptr;
    for (const QSize size : { QSize(50, 40), QSize(80, 30) }) {
        second = new QWidget;
        second->setFixedSize(size);
        sheet.setWidget(second);
    }
    QCOMPARE(sheet.layout()->count(), 1);
    sheet.resize(300, 250);
    window.show();
    QVERIFY(isCentred(*second, sheet.contentsRect().center()));
}

void SheetFrameTest::masks()
{
    DropWindow window;
    window.resize(500, 400);
    QWidget inner(&window);
    inner.resize(100, 100);
    for (QWidget* parent : std::initializer_list<QWidget*> { &window, &inner }) {
        auto* sheet = new PlainSheet(parent);
        sheet->setFixedSize(200, 100);
        // Without a parent, that of the sheet.
        QCOMPARE(VantMask::createMask(sheet, nullptr, Qt::red), sheet);
        auto* mask = qobject_cast<VantMask*>(sheet->parentWidget());
        QVERIFY(mask && mask->parentWidget() == parent);
        QCOMPARE(mask->size(), window.size()); // whatever the parent's
        window.show();
        QVERIFY(mask->isHidden());
        sheet->show();
        QVERIFY(mask->isVisible());
        QCOMPARE(mask->grab().toImage().pixelColor(1, 1), QColor(Qt::red));
        window.resize(600, 450);
        parent->resize(parent->size() + QSize(1, 1)); // which is what an inner one is watched for
        QCOMPARE(mask->size(), window.size());
        QCoreApplication::processEvents();
        QVERIFY(isCentred(*sheet, mask->rect().center()));
        QVERIFY(!window.takesDrop({ 50, 50 }));
        QVERIFY(parent != &window || !window.takesDrop(sheet->geometry().center()));
        sheet->hide();
    }
    QVERIFY(window.takesDrop({ 50, 50 }));
    QCOMPARE(VantMask::createMask(nullptr, &window), nullptr);
    PlainSheet orphan(nullptr);
    QCOMPARE(VantMask::createMask(&orphan, nullptr), nullptr);
}

void SheetFrameTest::maskFollowsContent()
{
    QWidget window;
    window.resize(500, 400);
    window.show();
    PlainSheet sheet(&window);
    VantMask::createMask(&sheet, &window);
    QWidget* mask = sheet.parentWidget();
    QCOMPARE(mask->palette().color(QPalette::Window), QColor(0, 0, 0, 20));
    QWidget newcomer(&window); // over the mask
    newcomer.setGeometry(window.rect());
    newcomer.show();
    // A window that hides and shows leaves an open sheet open, and a closed one closed.
    for (const bool open : { true, false, true }) {
        sheet.setVisible(open);
        window.hide();
        window.show();
        QCOMPARE(sheet.isVisible(), open);
        QCOMPARE(window.childAt(1, 1), open ? mask : &newcomer);
    }
}

void SheetFrameTest::maskOutlivesContent()
{
    QWidget window;
    window.show();
    auto* sheet = new PlainSheet(&window);
    VantMask::createMask(sheet, &window);
    const QWidget* mask = sheet->parentWidget();
    sheet->show();
    delete sheet;
    QVERIFY(mask->isHidden());

    // A content that was moved to another mask has nothing more to do with this one.
    PlainSheet moved(&window);
    VantMask::createMask(&moved, &window);
    const QWidget* former = moved.parentWidget();
    moved.show();
    VantMask::createMask(&moved, &window);
    moved.show();
    QVERIFY(former->isHidden());
    delete former;
    QVERIFY(moved.isVisible());
}

QTEST_MAIN(SheetFrameTest)

#include "sheet-frame-test.moc"
