#include "bench.h"
#include "child-process.h"
#include "default-theme.h"
#include "families.h"
#include "virtual-display.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <chrono>
#include <memory>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

const QString openingSampler = QStringLiteral("sheet-opening");
const QString repaintSampler = QStringLiteral("sheet-repaint");
const QString idleSampler = QStringLiteral("sheet-idle");
const QString memoryChild = QStringLiteral("sheet-memory");

const QString question = QStringLiteral("Delete the 3 selected folders and everything in them? The files in "
                                        "them cannot be brought back afterwards.");

constexpr int warmUpCalls = 200;
constexpr int countedCalls = 1000;
constexpr double allowedBytes = 8 * 1024;
constexpr double allowedPaints = 1;

/** The window of an application. */
class Window : public QWidget
{
public:
    explicit Window(void (*fill)(QWidget*) = nullptr)
    {
        if (fill) {
            fill(this);
        }
        QWidget::resize(800, 600);
        show();
        settle();
    }

    /** Lets everything happen that still has to, until the window is the active one. */
    void settle()
    {
        activateWindow();
        const QDeadlineTimer limit(10000);
        do {
            QApplication::processEvents(QEventLoop::AllEvents, 5);
            if (limit.hasExpired()) {
                throw Failure(QStringLiteral("the window does not become the active one"));
            }
        } while (!isActiveWindow());
        QApplication::processEvents();
    }
};

void fillWithForm(QWidget* window)
{
    auto* const form = new QGridLayout(window);
    for (int row = 0; row < 12; ++row) {
        form->addWidget(new QLabel(QStringLiteral("Setting %1").arg(row)), row, 0);
        form->addWidget(new QLineEdit(QStringLiteral("its value")), row, 1);
        form->addWidget(new QPushButton(QStringLiteral("Change")), row, 2);
    }
}

/** Notes when a message, which has the slot done(int), was painted first, and answers it. */
class FirstPaint : public QObject
{
public:
    Clock::time_point at;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_message && isMessage(watched)) {
            m_message = watched;
            // Sent after the whole paint, of which this is the beginning.
            QMetaObject::invokeMethod(
                watched,
                [this] {
                    at = Clock::now();
                    QMetaObject::invokeMethod(m_message, "done", Q_ARG(int, QMessageBox::Ok));
                },
                Qt::QueuedConnection);
        }
        return false;
    }

private:
    static bool isMessage(const QObject* object)
    {
        return object->inherits("VantMessageSheet") || object->inherits("QMessageBox");
    }

    QObject* m_message = nullptr;
};

double nanosecondsBetween(Clock::time_point begin, Clock::time_point end)
{
    return std::chrono::duration<double, std::nano>(end - begin).count();
}

double openSheet(Window& window)
{
    FirstPaint firstPaint;
    const auto begin = Clock::now();
    {
        VantMessageSheet sheet(VantMessageSheet::Question, question, &window);
        VantMask::createMask(&sheet, &window, QColor(0, 0, 0, 20));
        sheet.installEventFilter(&firstPaint);
        requireSameWork(sheet.exec() == QMessageBox::Ok);
    }
    window.settle();
    return nanosecondsBetween(begin, firstPaint.at);
}

void dress(QAbstractButton* button, const char* stringKey, const char* styleKey)
{
    button->setText(ComponentStrings::getInstance().getString(QLatin1String(stringKey)));
    button->setStyleSheet(getStyleSheet(styleKey, false));
    button->setIcon(QIcon());
}

double openBox(Window& window)
{
    FirstPaint firstPaint;
    const auto begin = Clock::now();
    {
        QMessageBox box(&window);
        box.setIconPixmap(getGlobalImage("icon_question", ImageManager::Normal));
        box.setText(question);
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Discard);
        box.setStyleSheet(getStyleSheet("component.message_sheet_other", false));
        dress(box.button(QMessageBox::Ok), "ok", "component.apply_button");
        dress(box.button(QMessageBox::Discard), "cancel", "component.cancel_button");
        box.installEventFilter(&firstPaint);
        requireSameWork(box.exec() == QMessageBox::Ok);
    }
    window.settle();
    return nanosecondsBetween(begin, firstPaint.at);
}

// The mask has the window below it painted again, so there is something in it. The masks of all samples stay
// under the window, as they do in an application.
Sampler openBoth()
{
    useDefaultTheme();
    const auto window = std::make_shared<Window>(fillWithForm);
    return interleaved([window] { return openSheet(*window); }, [window] { return openBox(*window); });
}

class PixmapWidget : public QWidget
{
public:
    explicit PixmapWidget(const QPixmap& pixmap)
        : m_pixmap(pixmap)
    {
        setFixedSize(pixmap.size());
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).drawPixmap(0, 0, m_pixmap); }

private:
    QPixmap m_pixmap;
};

// The sheet as it is painted over its mask, and nothing of the mask.
QPixmap pictureOf(VantMessageSheet* sheet)
{
    QPixmap picture(sheet->size());
    picture.fill(Qt::transparent);
    sheet->render(&picture, {}, {}, QWidget::DrawChildren);
    return picture;
}

// Up to what rounding does to the translucent shadow.
bool lookAlike(const QWidget& one, const QWidget& other)
{
    const auto picture = [](const QWidget& widget) {
        return const_cast<QWidget&>(widget).grab().toImage().convertToFormat(
            QImage::Format_ARGB32_Premultiplied);
    };
    const QImage left = picture(one);
    const QImage right = picture(other);
    return left.size() == right.size()
        && std::equal(left.constBits(), left.constBits() + left.sizeInBytes(), right.constBits(),
            [](uchar a, uchar b) { return std::abs(a - b) <= 2; });
}

// In windows that are empty but for the masks: what lies below them costs both sides the same.
Sampler repaintBoth()
{
    useDefaultTheme();
    const auto sheetWindow = std::make_shared<Window>();
    const auto pixmapWindow = std::make_shared<Window>();
    auto* const sheet = new VantMessageSheet(VantMessageSheet::Question, question, sheetWindow.get());
    VantMask::createMask(sheet, sheetWindow.get(), QColor(0, 0, 0, 20));
    sheet->setFixedSize(540, 200);
    sheet->showSheet();
    sheetWindow->settle();
    auto* const pixmap = new PixmapWidget(pictureOf(sheet));
    VantMask::createMask(pixmap, pixmapWindow.get(), QColor(0, 0, 0, 20));
    pixmap->show();
    sheetWindow->settle();
    requireSameWork(sheet->isVisible() && pixmap->isVisible()
        && lookAlike(*sheet->parentWidget(), *pixmap->parentWidget()));
    return interleaved(repeated([sheetWindow, sheet] { sheet->repaint(); }),
        repeated([pixmapWindow, pixmap] { pixmap->repaint(); }));
}

/** Counts the paints of everything in the process. */
class PaintCounter : public QObject
{
public:
    int paints = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

// One that asks for another paint while it is painted keeps a processor busy for as long as it is open.
Sampler paintsWhileOpen()
{
    useDefaultTheme();
    const auto window = std::make_shared<Window>(fillWithForm);
    auto* const sheet = new VantMessageSheet(VantMessageSheet::Question, question, window.get());
    VantMask::createMask(sheet, window.get(), QColor(0, 0, 0, 20));
    sheet->showSheet();
    sheet->button(QMessageBox::Ok)->setFocus(); // not a field, whose cursor blinks
    window->settle();
    requireSameWork(sheet->isVisible());
    return [window] {
        PaintCounter counter;
        QApplication::instance()->installEventFilter(&counter);
        const QDeadlineTimer second(1000);
        while (!second.hasExpired()) {
            QApplication::processEvents(
                QEventLoop::WaitForMoreEvents, static_cast<int>(second.remainingTime()));
        }
        return Amounts { static_cast<double>(counter.paints), allowedPaints };
    };
}

double residentBytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:")) {
                return line.simplified().split(' ').value(1).toDouble() * 1024;
            }
        }
    }
    throw Failure(QStringLiteral("the system does not tell how much memory is resident"));
}

void callMessages(QWidget* window, int count)
{
    for (int call = 0; call < count; ++call) {
        FirstPaint answer;
        QApplication::instance()->installEventFilter(&answer);
        const int result = showConfirmMsg({}, question, window);
        requireSameWork(result == QMessageBox::Ok);
    }
}

ChildResult holdMessages(const QString& /*path*/)
{
    useDefaultTheme();
    Window window(fillWithForm);
    callMessages(&window, warmUpCalls);
    const double before = residentBytes();
    callMessages(&window, countedCalls);
    return { (residentBytes() - before) / countedCalls, {} };
}

Sampler openingOnDisplay()
{
    const auto display = std::make_shared<VirtualDisplay>();
    const Sampler sample = samplerInChild(openingSampler, display->environment());
    return [display, sample] { return sample(); };
}

Sampler memoryOnDisplay()
{
    const auto display = std::make_shared<VirtualDisplay>();
    return [display] {
        return Amounts { runChild(memoryChild, {}, display->environment()).amount, allowedBytes };
    };
}

} // namespace

void addSheetRows(Suite& suite)
{
    suite.samplers[openingSampler] = openBoth;
    suite.samplers[repaintSampler] = repaintBoth;
    suite.samplers[idleSampler] = paintsWhileOpen;
    suite.children[memoryChild] = holdMessages;

    const QString sheet = QStringLiteral("VantMessageSheet with its mask, to its first paint");
    const QString box =
        QStringLiteral("QMessageBox with the same text, buttons and style sheets, to its first paint");
    suite.rows.push_back({ QStringLiteral("sheets.open"), QStringLiteral("one message on Xvfb with openbox"),
        sheet, box, 0.85, 101, openingOnDisplay });
    suite.rows.push_back({ QStringLiteral("sheets.open-offscreen"), QStringLiteral("one message offscreen"),
        sheet, box, std::nullopt, 101, [] { return samplerInChild(openingSampler, offscreen()); } });
    suite.rows.push_back({ QStringLiteral("sheets.repaint"), QStringLiteral("one repaint of 540 by 200"),
        QStringLiteral("the repaint of a shown VantMessageSheet"),
        QStringLiteral("painting one pixmap of it, rendered before"), std::nullopt, 301,
        [] { return samplerInChild(repaintSampler, offscreen()); } });
    suite.rows.push_back({ QStringLiteral("sheets.idle"), QStringLiteral("one second of an open message"),
        QStringLiteral("the paints of a VantMessageSheet that nobody touches"),
        QStringLiteral("an allowance of one"), 0.0, 5,
        [] { return samplerInChild(idleSampler, offscreen()); }, Quantity::Count });
    suite.rows.push_back({ QStringLiteral("sheets.memory"),
        QStringLiteral("one of 1,000 messages on one window, on Xvfb with openbox"),
        QStringLiteral("the resident memory that showConfirmMsg leaves taken"),
        QStringLiteral("an allowance of 8 KB"), 1.0, 5, memoryOnDisplay, Quantity::Memory });
}

} // namespace bench
