#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/widgets/vant-icon-button.h>

#include <QPushButton>

class IconButtonTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void look();
    void transitions_data();
    void transitions();
    void setters();
    void clickSeesRestingImage();
};

namespace {

const QList<QColor> stateColors { Qt::black, Qt::green, Qt::blue, Qt::red };

QPixmap filled(int width, int height, const QColor& color)
{
    QPixmap pixmap(width, height);
    pixmap.fill(color);
    return pixmap;
}

QSize logical(int width, int height)
{
    return QSize(width, height) / displayscale::ratio();
}

/** A window with the button, and beside it one that has the focus. */
struct Window : QWidget
{
    explicit Window(bool enabled = true)
    {
        resize(300, 200);
        other->move(100, 0);
        other->setFocus();
        button->setParent(this);
        button->setEnabled(enabled);
        pointer::moveAway();
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("The window does not become active");
        }
    }

    QColor shown() const
    {
        const QImage picture = button->grab().toImage();
        return picture.pixelColor(picture.rect().center());
    }

    VantIconButton* button = new VantIconButton(QStringLiteral("icon"));
    QPushButton* other = new QPushButton(this);
};

} // namespace

void IconButtonTest::initTestCase()
{
    const ThemeFolder theme;
    const char* const files[] { "icon", "icon_hover", "icon_click", "icon_disable" };
    for (int state = 0; state < stateColors.size(); ++state) {
        theme.writeImage(QLatin1String(files[state]), { 64, 48 }, stateColors.at(state));
    }
    theme.writeList({ QStringLiteral("icon") });
    theme.initializeImages(ImageManager::EagerLoad);
    StyleManager::getInstance().initialize({ theme.write(
        QStringLiteral("a.style"), "==component.icon_button==\nQToolButton { border: none }") });
}

void IconButtonTest::look()
{
    const VantIconButton named(QStringLiteral("icon"));
    const VantIconButton drawn(filled(40, 20, Qt::red));
    for (const VantIconButton* button : { &named, &drawn }) {
        QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
        QCOMPARE(button->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(button->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(button->styleSheet(), QStringLiteral("\nQToolButton { border: none }"));
    }
}

void IconButtonTest::transitions_data()
{
    // Each step, and after it the state whose image is seen.
    QTest::addColumn<QByteArray>("steps");
    const auto row = [](const char* name, const char* steps) { QTest::newRow(name) << QByteArray(steps); };
    row("clicked", "enter 1 font 1 press 2 release 0 leave 0 enter 1 leave 0");
    row("released outside", "enter 1 press 2 release-outside 0");
    row("focused", "focus 0 enter 1 leave 1 press 2 release 0 leave 0");
    row("disabled under the pointer", "enter 1 disable 3 leave 3 enter 3 press 3 release 3");
    row("enabled under the pointer", "enter 1 disable 3 enable 0 leave 0 enter 1");
    row("disabled while pressed", "enter 1 press 2 disable 3 release 3 enable 0");
    row("disabled, other changes", "disable 3 font 3");
    row("disabled with its window", "disable-window 3 enter 3 enable-window 0");
    row("shown disabled", "hide 0 disable 3 show 3 enter 3 leave 3");
    row("shown again", "focus 0 enter 1 leave 1 hide 1 show 0");
}

void IconButtonTest::transitions()
{
    QFETCH(QByteArray, steps);
    Window window;
    QCOMPARE(window.shown(), stateColors.at(ImageManager::Normal));
    const QList<QByteArray> list = steps.split(' ');
    for (int i = 0; i < list.size(); i += 2) {
        if (list.at(i) == "release-outside") {
            pointer::release(window.other);
        } else {
            QVERIFY2(pointer::act(window.button, list.at(i)), list.at(i).constData());
        }
        QVERIFY2(window.shown() == stateColors.at(list.at(i + 1).toInt()),
            qPrintable(QStringLiteral("after %1 steps: %2").arg(i / 2 + 1).arg(window.shown().name())));
    }
    QCOMPARE(Window(false).shown(), stateColors.at(ImageManager::Disable));
}

void IconButtonTest::setters()
{
    Window window;
    const QSize before = displayscale::pick(QSize(16, 12), QSize(20, 15), QSize(24, 18), QSize(32, 24));
    QCOMPARE(window.button->iconSize(), before);

    // A new image is seen at once, in every state, a new size from the next change of state on.
    window.button->setDefaultIcon(filled(80, 40, Qt::cyan));
    QCOMPARE(window.shown(), QColor(Qt::cyan));
    QCOMPARE(window.button->iconSize(), before);
    for (const char* step : { "enter", "press", "disable", "enable" }) {
        pointer::act(window.button, step);
        QCOMPARE(window.shown(), QColor(Qt::cyan));
        QCOMPARE(window.button->iconSize(), logical(80, 40));
    }

    // The other images wait for their state, and leave the size alone.
    window.button->setHoverIcon(filled(10, 10, Qt::yellow));
    window.button->setPressIcon(filled(10, 10, Qt::magenta));
    window.button->setDisableIcon(filled(10, 10, Qt::white));
    const QList<QPair<const char*, QColor>> steps { { "leave", Qt::cyan }, { "enter", Qt::yellow },
        { "press", Qt::magenta }, { "disable", Qt::white } };
    for (const auto& step : steps) {
        pointer::act(window.button, step.first);
        QCOMPARE(window.shown(), step.second);
        QCOMPARE(window.button->iconSize(), logical(80, 40));
    }

    window.button->setAllIcon(QStringLiteral("icon"));
    QCOMPARE(window.shown(), stateColors.at(ImageManager::Normal));
    window.button->setDefaultIcon(filled(25, 7, Qt::red));
    window.button->setEnabled(true);
    QCOMPARE(window.button->iconSize(), displayscale::ratio() == 2 ? QSize(13, 4) : QSize(25, 7));
}

void IconButtonTest::clickSeesRestingImage()
{
    Window window;
    QColor seen;
    connect(window.button, &QAbstractButton::clicked, this, [&] { seen = window.shown(); });
    pointer::moveTo(window.button);
    pointer::press(window.button);
    pointer::release(window.button);
    QCOMPARE(seen, stateColors.at(ImageManager::Normal));
}

QTEST_MAIN(IconButtonTest)

#include "icon-button-test.moc"
