#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/widgets/vant-icon-button.h>

#include <QMenu>
#include <QPushButton>

class IconButtonTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void transitions_data();
    void transitions();
    void menu();
    void setters();
};

namespace {

const QList<QColor> stateColors { Qt::black, Qt::green, Qt::blue, Qt::red };

QPixmap filled(int width, int height, const QColor& color)
{
    QPixmap pixmap(width, height);
    pixmap.fill(color);
    return pixmap;
}

/** A window with the button, and beside it one that has the focus. */
struct Window : QWidget
{
    Window()
    {
        resize(300, 200);
        other->move(100, 0);
        other->setFocus();
        button->setParent(this);
        pointer::moveAway();
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
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
    int state = 0;
    for (const char* file : { "icon", "icon_hover", "icon_click", "icon_disable" }) {
        theme.writeImage(file, { 64, 48 }, stateColors.at(state++));
    }
    theme.writeList({ "icon" });
    theme.initializeImages(ImageManager::EagerLoad);
    StyleManager::getInstance().initialize({ theme.write("a.style", "==component.icon_button==\n") });
}

void IconButtonTest::transitions_data()
{
    // Each step, and after it the state whose image is seen.
    QTest::addColumn<QByteArray>("steps");
    for (const char* steps :
        { "enter 1 font 1 press 2 release 0 leave 0 enter 1 leave 0", "enter 1 press 2 release-outside 0",
            "enter 1 disable 3 leave 3 enter 3 press 3 release 3 enable 0 leave 0 enter 1",
            "enter 1 press 2 disable 3 release 3 enable 0", "disable-window 3 font 3 enter 3 enable-window 0",
            "hide 0 disable 3 show 3 enter 3 leave 3", "focus 0 enter 1 leave 1 hide 1 show 0" }) {
        QTest::newRow(steps) << QByteArray(steps);
    }
}

void IconButtonTest::transitions()
{
    QFETCH(QByteArray, steps);
    Window window;
    QCOMPARE(window.shown(), stateColors.at(ImageManager::Normal));
    QColor seenByClick = stateColors.at(ImageManager::Normal);
    connect(window.button, &QAbstractButton::clicked, this, [&] { seenByClick = window.shown(); });
    const QList<QByteArray> list = steps.split(' ');
    for (int i = 0; i < list.size(); i += 2) {
        const bool outside = list.at(i) == "release-outside";
        QVERIFY(outside ? pointer::act(window.other, "release") : pointer::act(window.button, list.at(i)));
        QVERIFY2(window.shown() == stateColors.at(list.at(i + 1).toInt()), list.at(i).constData());
    }
    QCOMPARE(seenByClick, stateColors.at(ImageManager::Normal));
}

/** The menu gets the release of the button that opened it. */
void IconButtonTest::menu()
{
    // What the action does that was chosen, if one was.
    for (const QByteArray slot : { "nothing", "enable", "disable", "delete" }) {
        Window window;
        const QPointer<VantIconButton> button = window.button;
        QMenu menu;
        QAction* action = menu.addAction(QStringLiteral("Action"));
        connect(action, &QAction::triggered, this, [&] { pointer::act(button, slot); });
        const auto answer = [&] {
            const auto end = qScopeGuard([&] { menu.close(); });
            QTRY_VERIFY(menu.isVisible());
            QCOMPARE(window.shown(), stateColors.at(ImageManager::Click));
            pointer::release(button);
            const QRect place = slot == "nothing" ? QRect(-20, -20, 1, 1) : menu.actionGeometry(action);
            QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, {}, place.center());
        };
        connect(&menu, &QMenu::aboutToShow, this, answer, Qt::QueuedConnection);
        button->setMenu(&menu);
        pointer::press(button); // returns when the menu is closed
        QCOMPARE(button.isNull(), slot == "delete");
        const int state = slot == "disable" ? ImageManager::Disable : ImageManager::Normal;
        QVERIFY2(!button || window.shown() == stateColors.at(state), slot);
    }
}

void IconButtonTest::setters()
{
    Window window;
    VantIconButton* button = window.button;
    const QSize before = displayscale::pick(QSize(16, 12), QSize(20, 15), QSize(24, 18), QSize(32, 24));
    QCOMPARE(button->iconSize(), before);

    // A new image is seen at once, in every state, a new size from the next change of state on.
    button->setDefaultIcon(filled(81, 40, Qt::cyan));
    QCOMPARE(window.shown(), QColor(Qt::cyan));
    QCOMPARE(button->iconSize(), before);
    const auto check = [&](const char* step, const QColor& color) {
        pointer::act(button, step);
        QCOMPARE(window.shown(), color);
        QCOMPARE(button->iconSize(), displayscale::ratio() == 2 ? QSize(41, 20) : QSize(81, 40));
    };
    for (const char* step : { "enter", "press", "disable", "enable" }) {
        check(step, Qt::cyan);
    }
    // The other images wait for their state, and leave the size alone.
    button->setHoverIcon(filled(10, 10, Qt::yellow));
    button->setPressIcon(filled(10, 10, Qt::magenta));
    button->setDisableIcon(filled(10, 10, Qt::white));
    check("leave", Qt::cyan);
    check("enter", Qt::yellow);
    check("press", Qt::magenta);
    check("disable", Qt::white);
    button->setAllIcon(QStringLiteral("icon"));
    QCOMPARE(window.shown(), stateColors.at(ImageManager::Normal));
}

QTEST_MAIN(IconButtonTest)

#include "icon-button-test.moc"
