#include "support/display-scale.h"
#include "support/pointer.h"
#include "support/themed-test.h"

namespace {

const QColor stateColors[] { Qt::black, Qt::green, Qt::blue, Qt::red };
const QSize restingSize = QSize(64, 48) / displayscale::ratio();

QPixmap filled(const QColor& color, const QSize& size = { 10, 10 })
{
    QPixmap pixmap(size);
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
        button->setHoverIcon(filled(Qt::green));
        button->setPressIcon(filled(Qt::blue));
        button->setDisableIcon(filled(Qt::red));
        pointer::moveAway();
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    QColor shown() const
    {
        const QImage picture = button->grab().toImage();
        return picture.pixelColor(picture.rect().center());
    }

    VantIconButton* button = new VantIconButton(filled(Qt::black, { 64, 48 }));
    QPushButton* other = new QPushButton(this);
};

} // namespace

class IconButtonTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void transitions()
    {
        // Each step, and after it the state whose image is seen.
        for (const QByteArray row :
            { "enter 1 font 1 press 2 release 0 leave 0 enter 1 leave 0", "enter 1 press 2 release-outside 0",
                "enter 1 disable 3 leave 3 enter 3 press 3 release 3 enable 0 leave 0 enter 1",
                "enter 1 press 2 disable 3 release 3 enable 0", "disable-window 3 font 3 enable-window 0",
                "hide 0 disable 3 show 3 enter 3 leave 3", "focus 0 enter 1 leave 1 hide 1 show 0" }) {
            Window window;
            QCOMPARE(window.shown(), stateColors[ImageManager::Normal]);
            QVector<QColor> seenByClicks;
            connect(window.button, &QToolButton::clicked, this, [&] { seenByClicks += window.shown(); });
            const QList<QByteArray> steps = row.split(' ');
            for (int i = 0; i < steps.size(); i += 2) {
                steps[i] == "release-outside" ? pointer::release(window.other)
                                              : pointer::act(window.button, steps[i]);
                QVERIFY2(window.shown() == stateColors[steps[i + 1].toInt()], row + ": " + steps[i]);
                QCOMPARE(window.button->iconSize(), restingSize);
            }
            QVERIFY2(!window.button->isDown(), row);
            QCOMPARE(seenByClicks, QVector<QColor>(row.contains("press 2 release 0") ? 1 : 0, Qt::black));
        }
    }

    /** The menu gets the release of the button that opened it. */
    void menu()
    {
        // What the action does that was chosen, if one was.
        for (const QByteArray slot : { "nothing", "disable", "delete" }) {
            Window window;
            const QPointer<VantIconButton> button = window.button;
            QMenu menu;
            QAction* action = menu.addAction("Action");
            connect(action, &QAction::triggered, this, [&] { pointer::act(button, slot); });
            const auto answer = [&] {
                const auto end = qScopeGuard([&] { menu.close(); });
                QTRY_VERIFY(menu.isVisible());
                QCOMPARE(window.shown(), stateColors[ImageManager::Click]);
                pointer::release(button);
                const QRect place = slot == "nothing" ? QRect(-20, -20, 1, 1) : menu.actionGeometry(action);
                QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, {}, place.center());
            };
            connect(&menu, &QMenu::aboutToShow, this, answer, Qt::QueuedConnection);
            button->setMenu(&menu);
            pointer::press(button); // returns when the menu is closed
            QCOMPARE(button.isNull(), slot == "delete");
            QVERIFY2(!button || window.shown() == stateColors[slot == "disable" ? 3 : 0], slot);
        }
    }

    void setters()
    {
        Window window;
        // A new image is seen at once, in every state, a new size from the next change of state on.
        window.button->setDefaultIcon(filled(Qt::cyan, { 81, 40 }));
        QCOMPARE(window.button->iconSize(), restingSize);
        for (const char* step : { "nothing", "enter", "press", "release", "disable", "enable", "leave" }) {
            pointer::act(window.button, step);
            QCOMPARE(window.shown(), QColor(Qt::cyan));
        }
        QCOMPARE(window.button->iconSize(), displayscale::ratio() == 2 ? QSize(41, 20) : QSize(81, 40));

        const QString name = "bt_pagebar_next";
        window.button->setAllIcon(name);
        int state = ImageManager::Normal;
        for (const char* step : { "nothing", "enter", "press", "disable" }) {
            pointer::act(window.button, step);
            const QIcon icon = getGlobalImage(name, ImageManager::ImageType(state++));
            QCOMPARE(window.button->icon().pixmap(64).toImage(), icon.pixmap(64).toImage());
        }
        QCOMPARE(window.button->iconSize(), getGlobalImage(name).size() / displayscale::ratio());
        QAction action;
        const QSignalSpy spy(&action, &QAction::hovered);
        window.button->setDefaultAction(&action);
        pointer::act(window.button, "leave");
        pointer::act(window.button, "enter");
        QCOMPARE(spy.count(), 1);
    }
};

QTEST_MAIN(IconButtonTest)

#include "icon-button-test.moc"
