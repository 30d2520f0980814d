#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QtTest>

#include <memory>

/** The widgets that are a look and a rule or two. */
class SimpleWidgetsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void looks();
    void comboBox();
    void menuStaysOnScreen();
    void labelHeight();
    void messageLabelHeight();
    void footbar();
    void mouseFilters();
    void lineEdit();
};

namespace {

const QString longText = QStringLiteral("word ").repeated(60);

int px(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

/** The section of the test's template with this key, as it is scaled for the display. */
QString sheetOf(const char* key)
{
    return QStringLiteral("\n#%1 { margin: %2px }").arg(QLatin1String(key)).arg(px(6));
}

} // namespace

void SimpleWidgetsTest::initTestCase()
{
    const ThemeFolder theme;
    theme.initializeImages(ImageManager::LazyLoad);
    QByteArray templates = "==component.combobox==\nQComboBox { %1 height: 10px; %2 }";
    for (const char* key : { "apply_button", "cancel_button", "select_paging_button",
             "nonselect_paging_button", "default_button", "red_button", "checkbox", "radio_button", "label",
             "scrollbar", "lineedit", "lineedit_label" }) {
        templates += QByteArray("\n==component.") + key + "==\n#" + key + " { margin: 6px }";
    }
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("kit.style"), templates) });
}

void SimpleWidgetsTest::looks()
{
    const QString text = QStringLiteral("&Text");
    const char* const buttonKeys[] { "apply_button", "cancel_button", "select_paging_button",
        "nonselect_paging_button", "default_button", "red_button" };
    for (int type = 0; type < 6; ++type) {
        QCOMPARE(VantButton(text, type).styleSheet(), sheetOf(buttonKeys[type]));
    }
    QCOMPARE(VantButton(text, 6).styleSheet() + VantButton(text, -1).styleSheet(), QString());
    QCOMPARE(VantCheckBox(text).styleSheet(), sheetOf("checkbox"));
    QCOMPARE(VantRadioButton(text).styleSheet(), sheetOf("radio_button"));
    QCOMPARE(VantLabel(text).styleSheet(), sheetOf("label"));
}

void SimpleWidgetsTest::comboBox()
{
    // The padding keeps its fraction, and the border its pixel.
    auto box = std::make_unique<VantComboBox>();
    QCOMPARE(box->styleSheet(),
        QStringLiteral("\nQComboBox { padding-left: %1px; \npadding-right: %1px; height: %2px; border: 1px "
                       "solid #C8D2DC; }")
                .arg(6 * displayscale::dpi() / 96.0)
                .arg(px(10))
            + sheetOf("scrollbar"));

    const QPointer<QAbstractItemDelegate> delegate = box->itemDelegate();
    QCOMPARE(delegate->metaObject()->className(), "QStyledItemDelegate");
    QStyledItemDelegate other;
    box->view()->setItemDelegate(&other);
    box.reset();
    QVERIFY(!delegate);
}

void SimpleWidgetsTest::menuStaysOnScreen()
{
    const auto shownAt = [](const QPoint& position) {
        VantMenu menu;
        menu.addAction(QStringLiteral("Action"));
        menu.setFixedSize(100, 80);
        // The offscreen platform moves a new window once, by the frame that it gives it.
        menu.winId();
        menu.move(position);
        menu.show();
        return menu.pos();
    };
    // QRect's right and bottom belong to it.
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint begin = area.topLeft();
    const QPoint end = area.bottomRight() - QPoint(100, 80);
    QCOMPARE(shownAt(end), end);
    QCOMPARE(shownAt(end + QPoint(1, 1)), end);
    QCOMPARE(shownAt(end + QPoint(150, 130)), end);
    QCOMPARE(shownAt(begin + QPoint(-1, 9)), begin + QPoint(0, 9));
    QCOMPARE(shownAt(begin + QPoint(9, -300)), begin + QPoint(9, 0));
}

void SimpleWidgetsTest::labelHeight()
{
    for (const bool wraps : { true, false }) {
        for (const QSizePolicy::Policy policy : { QSizePolicy::Minimum, QSizePolicy::MinimumExpanding }) {
            QWidget window;
            VantLabel label(&window);
            label.setWordWrap(wraps);
            label.setSizePolicy(QSizePolicy::Preferred, policy);
            window.show();
            label.resize(100, 10);
            QCOMPARE(label.minimumHeight(), 0); // it never had a text
            label.setText(longText);
            const bool keepsHeight = wraps && policy == QSizePolicy::Minimum;
            QLabel twin(longText);
            twin.setWordWrap(wraps);
            for (const int width : { 600, 300, 600 }) {
                label.resize(width, 10);
                QCOMPARE(label.minimumHeight(), keepsHeight ? twin.heightForWidth(width) : 0);
            }
        }
    }
}

void SimpleWidgetsTest::messageLabelHeight()
{
    for (const QString& text : { longText, QString() }) {
        QWidget window;
        MessageLabel label(&window);
        label.setWordWrap(true);
        label.setText(text);
        QLabel twin(text);
        twin.setWordWrap(true);
        window.show();
        for (const int width : { 600, 300, 900 }) {
            label.resize(width, 500);
            QCOMPARE(label.size(), QSize(width, qMax(0, twin.heightForWidth(width))));
            QCOMPARE(label.minimumHeight(), label.maximumHeight());
        }
    }
}

void SimpleWidgetsTest::footbar()
{
    VantFootbar bar;
    QVector<QWidget*> widgets;
    for (const QSize& size : { QSize(50, 20), QSize(60, 30), QSize(50, 20), QSize(60, 20) }) {
        widgets << new QWidget;
        widgets.last()->setFixedSize(size);
    }
    widgets[0]->setMaximumHeight(QWIDGETSIZE_MAX); // the bar does not stretch it either
    bar.setMargins(1, 2, 3, 4); // undone by init
    bar.setSpacing(1);
    bar.layout()->addItem(new QSpacerItem(0, 0)); // something of the application's own
    bar.pushRightWidget(widgets[2]);
    bar.pushLeftWidget(widgets[0]);
    bar.pushRightWidget(widgets[3]);
    bar.pushLeftWidget(widgets[1]);
    bar.init();
    bar.init();
    bar.resize(600, bar.sizeHint().height());
    bar.show();
    QVector<QPoint> places;
    for (const QWidget* widget : widgets) {
        places << widget->pos();
    }
    const int last = 600 - px(20) - 60;
    QCOMPARE(bar.height(), 30 + 2 * px(8));
    QCOMPARE(places,
        QVector<QPoint>({ { px(20), px(8) + 5 }, { px(20) + 50 + px(10), px(8) },
            { last - px(10) - 50, px(8) + 5 }, { last, px(8) + 5 } }));

    QWidget late;
    bar.pushLeftWidget(&late);
    QCOMPARE(late.parentWidget(), nullptr);
}

void SimpleWidgetsTest::mouseFilters()
{
    for (const QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
             QEvent::MouseButtonDblClick, QEvent::MouseMove }) {
        QMouseEvent event(type, { 5, 5 }, Qt::RightButton, Qt::RightButton, Qt::NoModifier);
        QCOMPARE(MouseButtonFilter().eventFilter(this, &event), type != QEvent::MouseMove);
        QCOMPARE(MouseReleaseFilter().eventFilter(this, &event), type == QEvent::MouseButtonRelease);
    }
}

void SimpleWidgetsTest::lineEdit()
{
    VantLineEdit edit;
    QLineEdit* field = edit.getLineEdit();
    QLabel* before = edit.getPreLabel();
    QCOMPARE(field->styleSheet(), sheetOf("lineedit"));
    QCOMPARE(before->styleSheet(), sheetOf("lineedit_label"));
    QCOMPARE(edit.getPostLabel()->styleSheet(), sheetOf("lineedit_label"));
    field->setStyleSheet(QString());
    before->setStyleSheet(QString());
    edit.show();
    QCOMPARE(field->x(), 0);
    before->setText(QStringLiteral("&Before"));
    edit.getPostLabel()->setText(QStringLiteral("After"));
    edit.setSpacing(7);
    edit.setMargins(3, 1, 5, 2);
    QCOMPARE(edit.layout()->contentsMargins(), QMargins(px(3), px(1), px(5), px(2)));
    QCoreApplication::processEvents();
    QCOMPARE(field->x() - before->geometry().right() - 1, px(7));
    QVERIFY(edit.getPostLabel()->x() > field->geometry().right());

    QVERIFY(edit.validate());
    edit.setValidator([](const QString& text) { return text == QLatin1String("good"); });
    QVERIFY(!edit.validate());
    field->setText(QStringLiteral("good"));
    QVERIFY(edit.validate());
    field->clear();
    edit.setValidator(nullptr);
    QVERIFY(edit.validate());

    QVERIFY(QTest::qWaitForWindowActive(&edit));
    edit.setFocus();
    QVERIFY(field->hasFocus());
    field->clearFocus();
    QTest::keyClick(&edit, Qt::Key_B, Qt::AltModifier);
    QVERIFY(field->hasFocus());

    field->setStyleSheet(QStringLiteral(
        "QLineEdit { background: #102030; border: none } QLineEdit[error=\"true\"] { background: #A0B0C0 }"));
    for (const bool error : { true, false, true }) {
        edit.setError(error);
        field->setText(QStringLiteral("typed"));
        QCOMPARE(field->grab().toImage().pixelColor(1, 1),
            error ? QColor(0xA0, 0xB0, 0xC0) : QColor(0x10, 0x20, 0x30));
    }
}

QTEST_MAIN(SimpleWidgetsTest)

#include "simple-widgets-test.moc"
