#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/widgets/vant-icon-button.h>

#include <QPushButton>
#include <QtTest>

class ButtonsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void transitions_data();
    void transitions();
    void setters();
    void clickSeesRestingImage();
    void look_data();
    void look();

private:
    ThemeFolder theme;
};

namespace {

const QVector<QColor> stateColors { Qt::black, Qt::green, Qt::blue, Qt::red };

QPixmap filled(const QSize& size, const QColor& color)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

QColor shown(VantIconButton& button)
{
    const QImage picture = button.grab().toImage();
    return picture.pixelColor(picture.rect().center());
}

/** A window with the button, and beside it one that takes the focus away. */
struct Window
{
    Window()
    {
        widget.resize(300, 200);
        other->move(100, 0);
        button->setParent(&widget);
        other->setFocus();
    }

    bool show()
    {
        widget.show();
        pointer::moveAway();
        return QTest::qWaitForWindowActive(&widget);
    }

    bool act(const QByteArray& action);

    QWidget widget;
    VantIconButton* button = new VantIconButton(QStringLiteral("icon"));
    QPushButton* other = new QPushButton(&widget);
};

bool Window::act(const QByteArray& action)
{
    if (action == "show") {
        return show();
    } else if (action == "hide") {
        widget.hide();
    } else if (action == "enter") {
        pointer::moveTo(button);
    } else if (action == "leave") {
        pointer::moveAway();
    } else if (action == "press") {
        pointer::press(button);
    } else if (action == "release") {
        pointer::release(button);
    } else if (action == "release-outside") {
        pointer::release(other);
    } else if (action == "focus") {
        button->setFocus();
    } else if (action == "restyle") {
        button->setFont(QFont(QStringLiteral("sans-serif"), 20));
    } else if (action.endsWith("able")) {
        button->setEnabled(action == "enable");
    } else if (action.endsWith("able-window")) {
        widget.setEnabled(action == "enable-window");
    } else {
        return false;
    }
    return true;
}

} // namespace

void ButtonsTest::initTestCase()
{
    const QStringList files { QStringLiteral("icon"), QStringLiteral("icon_hover"),
        QStringLiteral("icon_click"), QStringLiteral("icon_disable") };
    for (int state = 0; state < files.size(); ++state) {
        theme.writeImage(files.at(state), { 64, 48 }, stateColors.at(state));
    }
    theme.writeList({ QStringLiteral("icon") });
    theme.initializeImages(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize({ theme.write(
        QStringLiteral("kit.style"), "==component.icon_button==\nQToolButton { border: none }") });
}

void ButtonsTest::transitions_data()
{
    // Each action, and after it the state whose image is seen.
    QTest::addColumn<QByteArray>("steps");
    const auto row = [](const char* name, const char* steps) { QTest::newRow(name) << QByteArray(steps); };
    row("click", "show 0 enter 1 press 2 release 0 restyle 0 leave 0 enter 1 leave 0");
    row("click left by the pointer", "show 0 enter 1 press 2 release-outside 0");
    row("focused", "show 0 focus 0 enter 1 leave 1 press 2 release 0 leave 0");
    row("disabled under the pointer", "show 0 enter 1 disable 3 leave 3 enter 3 press 3 release 3");
    row("enabled under the pointer", "show 0 enter 1 disable 3 enable 0 leave 0 enter 1");
    row("disabled while pressed", "show 0 enter 1 press 2 disable 3 release 3 enable 0");
    row("shown disabled", "disable 3 show 3 enter 3 leave 3 hide 3 show 3");
    row("shown again under the pointer", "show 0 enter 1 hide 1 show 0");
    row("disabled with its window", "show 0 disable-window 3 enter 3 enable-window 0");
    row("other changes while disabled", "show 0 disable 3 restyle 3");
}

void ButtonsTest::transitions()
{
    QFETCH(QByteArray, steps);
    Window window;
    const QList<QByteArray> list = steps.split(' ');
    for (int i = 0; i < list.size(); i += 2) {
        QVERIFY2(window.act(list.at(i)), list.at(i).constData());
        QVERIFY2(shown(*window.button) == stateColors.at(list.at(i + 1).toInt()),
            qPrintable(QStringLiteral("after step %1 of %2: %3")
                           .arg(i / 2 + 1)
                           .arg(QString::fromUtf8(steps), shown(*window.button).name())));
    }
}

void ButtonsTest::setters()
{
    Window window;
    VantIconButton& button = *window.button;
    QVERIFY(window.show());
    const QSize before = button.iconSize();

    // A new image is seen at once, a new size at the next change of state; the other setters wait for their
    // state.
    button.setDefaultIcon(filled(QSize(80, 40), Qt::cyan));
    QCOMPARE(shown(button), QColor(Qt::cyan));
    QCOMPARE(button.iconSize(), before);
    button.setHoverIcon(filled({ 10, 10 }, Qt::yellow));
    button.setPressIcon(filled({ 10, 10 }, Qt::magenta));
    button.setDisableIcon(filled({ 10, 10 }, Qt::white));
    QCOMPARE(shown(button), QColor(Qt::cyan));
    pointer::moveTo(&button);
    QCOMPARE(shown(button), QColor(Qt::yellow));
    QCOMPARE(button.iconSize(), QSize(80, 40) / displayscale::ratio());
    pointer::press(&button);
    QCOMPARE(shown(button), QColor(Qt::magenta));
    button.setEnabled(false);
    QCOMPARE(shown(button), QColor(Qt::white));

    button.setAllIcon(QStringLiteral("icon"));
    QCOMPARE(shown(button), stateColors.at(ImageManager::Normal));
    QCOMPARE(button.iconSize(), QSize(80, 40) / displayscale::ratio());
    button.setEnabled(true);
    QCOMPARE(
        button.iconSize(), displayscale::pick(QSize(16, 12), QSize(20, 15), QSize(24, 18), QSize(32, 24)));
}

void ButtonsTest::clickSeesRestingImage()
{
    Window window;
    QVERIFY(window.show());
    QColor seen;
    connect(window.button, &QAbstractButton::clicked, this, [&] { seen = shown(*window.button); });
    pointer::moveTo(window.button);
    pointer::press(window.button);
    pointer::release(window.button);
    QCOMPARE(seen, stateColors.at(ImageManager::Normal));
}

void ButtonsTest::look_data()
{
    QTest::addColumn<QPixmap>("pixmap");
    QTest::addColumn<QSize>("size");
    QTest::newRow("named") << QPixmap()
                           << displayscale::pick(QSize(16, 12), QSize(20, 15), QSize(24, 18), QSize(32, 24));
    QTest::newRow("pixmap") << filled({ 40, 20 }, Qt::red)
                            << (displayscale::ratio() == 2 ? QSize(20, 10) : QSize(40, 20));
    QTest::newRow("odd pixmap") << filled({ 25, 7 }, Qt::red)
                                << (displayscale::ratio() == 2 ? QSize(13, 4) : QSize(25, 7));
}

void ButtonsTest::look()
{
    QFETCH(QPixmap, pixmap);
    const std::unique_ptr<VantIconButton> button(
        pixmap.isNull() ? new VantIconButton(QStringLiteral("icon")) : new VantIconButton(pixmap));
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
    QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
    QCOMPARE(button->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(button->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(button->styleSheet(), QStringLiteral("\nQToolButton { border: none }"));
    button->show();
    QTEST(button->iconSize(), "size");
}

QTEST_MAIN(ButtonsTest)

#include "buttons-test.moc"
