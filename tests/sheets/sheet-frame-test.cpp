#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QDragEnterEvent>
#include <QLayout>
#include <QMimeData>
#include <QPainter>
#include <QtTest>

namespace {

/** A window that things can be dropped on. */
struct DropWindow : QWidget
{
    DropWindow()
    {
        setAcceptDrops(true);
        resize(500, 400);
        show();
    }

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

QImage render(PlainSheet& sheet)
{
    QImage image(sheet.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    sheet.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace

/** The panel with its shadow, and the mask that it lies in, with images of one colour each. */
class SheetFrameTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    /** Each image has two halves. Their border stays sharp in the edges, however the painter scales. */
    void shadow()
    {
        QWidget window;
        PlainSheet sheet(&window);
        sheet.resize(200, 150);
        const ThemeFolder theme;
        theme.initializeImages(ImageManager::LazyLoad);
        debug_message.setEnabled(QtWarningMsg, false);
        QCOMPARE(render(sheet).pixelColor(0, 0), QColor(Qt::black)); // without images
        debug_message.setEnabled(QtWarningMsg, true);

        const QStringList names { "bg_tutorial_lt", "bg_tutorial_t", "bg_tutorial_rt", "bg_tutorial_l",
            QString(), "bg_tutorial_r", "bg_tutorial_lb", "bg_tutorial_b", "bg_tutorial_rb" }; // row by row
        const auto colour = [](int index, int half) {
            return index == 4 ? QColor(Qt::white) : QColor(20 * index, 100, 60 + 100 * half);
        };
        theme.writeList(names);
        for (int i = 0; i < names.size(); ++i) {
            QImage image(8, 8, QImage::Format_ARGB32);
            image.fill(colour(i, 1));
            QPainter(&image).fillRect(0, 0, i % 3 == 1 ? 4 : 8, i % 3 == 1 ? 8 : 4, colour(i, 0));
            QVERIFY(image.save(theme.path("images/" + names[i] + ".png")));
        }
        theme.initializeImages(ImageManager::EagerLoad);
        const int shadow = displayscale::pick(22, 27, 33, 44);
        const int x[] { 0, shadow, 200 - shadow, 200 };
        const int y[] { 0, shadow, 150 - shadow, 150 };
        QImage image = render(sheet);
        for (const bool smooth : { false, true }) {
            if (smooth) {
                QPainter painter(&image);
                painter.setRenderHint(QPainter::SmoothPixmapTransform);
                sheet.drawShadow(painter);
            }
            for (int i = 0; i < names.size(); ++i) {
                const QPoint first(x[i % 3], y[i / 3]);
                const QPoint last(x[i % 3 + 1] - 1, y[i / 3 + 1] - 1);
                QCOMPARE(image.pixelColor(first), colour(i, 0));
                QCOMPARE(image.pixelColor(last), colour(i, 1));
                QSet<QRgb> colours;
                const QPoint step = i % 3 == 1 ? QPoint(1, 0) : QPoint(0, 1);
                for (QPoint at = first; at.x() <= last.x() && at.y() <= last.y(); at += step) {
                    colours += image.pixel(at);
                }
                QCOMPARE(
                    colours.size() > 4, smooth && i % 2 == 0 && i != 4); // the theme's scaling may mix two
            }
        }
    }

    void masks()
    {
        DropWindow window;
        QWidget inner(&window);
        inner.resize(100, 100);
        inner.show();
        for (QWidget* parent : std::initializer_list<QWidget*> { &window, &inner }) {
            auto* sheet = new PlainSheet(parent);
            // Without a parent, that of the sheet.
            QCOMPARE(VantMask::createMask(sheet, nullptr, Qt::red), sheet);
            auto* mask = qobject_cast<VantMask*>(sheet->parentWidget());
            QVERIFY(mask && mask->parentWidget() == parent);
            QCOMPARE(mask->size(), window.size()); // whatever the parent's
            window.hide();
            window.show();
            QVERIFY(mask->isHidden());
            QWidget* content = nullptr;
            for (const QSize size : { QSize(50, 40), QSize(80, 30) }) {
                content = new QWidget;
                content->setFixedSize(size);
                sheet->setWidget(content);
            }
            QCOMPARE(sheet->layout()->count(), 1);
            QCOMPARE(sheet->size(), sheet->sizeHint());
            sheet->setFixedSize(300, 250);
            sheet->setContentsMargins({});
            sheet->show();
            const int shadow = displayscale::pick(22, 27, 33, 44);
            QCOMPARE(sheet->contentsRect(), sheet->rect().adjusted(shadow, shadow, -shadow, -shadow));
            QCOMPARE(mask->grab().toImage().pixelColor(1, 1), QColor(Qt::red));
            window.resize(600, 450);
            parent->resize(parent->size() + QSize(1, 1)); // which is what an inner one is watched for
            QCOMPARE(mask->size(), window.size());
            QCoreApplication::processEvents();
            const QPoint off = sheet->geometry().center() - mask->rect().center();
            QVERIFY((off + content->geometry().center() - sheet->rect().center()).manhattanLength() <= 4);
            QVERIFY(!window.takesDrop({ 50, 50 }));
            QVERIFY(parent != &window || !window.takesDrop(sheet->geometry().center()));
            sheet->hide();
        }
        QVERIFY(window.takesDrop({ 50, 50 }));
        QCOMPARE(VantMask::createMask(nullptr, &window), nullptr);
        PlainSheet orphan(nullptr);
        QCOMPARE(VantMask::createMask(&orphan, nullptr), nullptr);
    }

    void maskFollowsContent()
    {
        DropWindow window;
        auto* sheet = new PlainSheet(&window);
        VantMask::createMask(sheet, &window);
        const QWidget* former = sheet->parentWidget();
        QCOMPARE(former->palette().color(QPalette::Window), QColor(0, 0, 0, 20));
        QWidget newcomer(&window); // over the mask
        newcomer.setGeometry(window.rect());
        newcomer.show();
        // A window that hides and shows leaves an open sheet open, and a closed one closed.
        for (const bool open : { true, false, true }) {
            sheet->setVisible(open);
            window.hide();
            window.show();
            QCOMPARE(sheet->isVisible(), open);
            QCOMPARE(window.childAt(1, 1), open ? former : &newcomer);
        }
        // A content that was moved to another mask has nothing more to do with this one.
        VantMask::createMask(sheet, &window);
        sheet->show();
        QVERIFY(former->isHidden());
        delete former;
        QVERIFY(sheet->isVisible());
        const QWidget* mask = sheet->parentWidget();
        delete sheet;
        QVERIFY(mask->isHidden());
    }
};

QTEST_MAIN(SheetFrameTest)

#include "sheet-frame-test.moc"
