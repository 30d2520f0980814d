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

#include <functional>
#include <memory>

/** The widgets that are a look and a rule or two. */
class SimpleWidgetsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void looks_data();
    void looks();
    void comboBoxLook();
    void comboBoxDelegate();
    void menuStaysOnScreen_data();
    void menuStaysOnScreen();
    void labelHeight_data();
    void labelHeight();
    void messageLabelHeight_data();
    void messageLabelHeight();
    void footbar();
    void footbarWithoutWidgets();
    void mouseFilters_data();
    void mouseFilters();
    void lineEdit();
    void lineEditError();
};

using Maker = std::function<QWidget*()>;
Q_DECLARE_METATYPE(Maker)

namespace {

const QString longText = QStringLiteral("word ").repeated(60);

/** Lets @p observe see every event of an object before the object does. */
struct Observer : QObject
{
    explicit Observer(std::function<void(QEvent*)> function)
        : observe(std::move(function))
    { }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        observe(event);
        return false;
    }

    std::function<void(QEvent*)> observe;
};

/** The section of the test's template with this key, as it is scaled for the display. */
QString sheetOf(const char* key)
{
    return *key == '\0'
        ? QString()
        : QStringLiteral("\n#%1 { margin: %2 }")
              .arg(QLatin1String(key), QLatin1String(displayscale::pick("3px", "3px", "4px", "6px")));
}

QWidget* fixed(int width, int height)
{
    auto* widget = new QWidget;
    widget->setFixedSize(width, height);
    return widget;
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
        templates += QByteArray("\n==component.") + key + "==\n#" + key + " { margin: 3px }";
    }
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("kit.style"), templates) });
}

void SimpleWidgetsTest::looks_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QString>("sheet");
    const auto row = [](const char* className, const char* key, const Maker& make) {
        QTest::addRow("%s, %s", className, key) << make << QByteArray(className) << sheetOf(key);
    };
    const QString text = QStringLiteral("&Text");
    row("VantButton", "apply_button", [=] { return new VantButton(text, 0); });
    row("VantButton", "cancel_button", [=] { return new VantButton(text, 1); });
    row("VantButton", "select_paging_button", [=] { return new VantButton(text, 2); });
    row("VantButton", "nonselect_paging_button", [=] { return new VantButton(text, 3); });
    row("VantButton", "default_button", [=] { return new VantButton(text, 4); });
    row("VantButton", "red_button", [=] { return new VantButton(text, 5); });
    row("VantButton", "", [=] { return new VantButton(text, 6); });
    row("VantButton", "", [=] { return new VantButton(text, -1); });
    row("VantCheckBox", "checkbox", [=] { return new VantCheckBox(text); });
    row("VantRadioButton", "radio_button", [=] { return new VantRadioButton(text); });
    row("VantLabel", "label", [=] { return new VantLabel(text); });
    row("LinkLabel", "", [=] { return new LinkLabel(text); });
    row("VantMenu", "", [=] { return new VantMenu; });
}

void SimpleWidgetsTest::looks()
{
    QFETCH(Maker, make);
    const std::unique_ptr<QWidget> widget(make());
    QTEST(widget->styleSheet(), "sheet");
    QTEST(QByteArray(widget->metaObject()->className()), "className");
    QVERIFY(!widget->property("text").isValid() || widget->property("text") == QStringLiteral("&Text"));
    if (const auto* button = qobject_cast<VantButton*>(widget.get())) {
        QVERIFY(button->isFlat());
        QCOMPARE(button->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(button->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    }
}

void SimpleWidgetsTest::comboBoxLook()
{
    // The padding keeps its fraction, and the border its pixel.
    QCOMPARE(VantComboBox().styleSheet(),
        QLatin1String("\nQComboBox { ")
            + QLatin1String(displayscale::pick("padding-left: 6px; \npadding-right: 6px; height: 10px",
                "padding-left: 7.5px; \npadding-right: 7.5px; height: 12px",
                "padding-left: 9px; \npadding-right: 9px; height: 15px",
                "padding-left: 12px; \npadding-right: 12px; height: 20px"))
            + QLatin1String("; border: 1px solid #C8D2DC; }") + sheetOf("scrollbar"));
}

void SimpleWidgetsTest::comboBoxDelegate()
{
    auto box = std::make_unique<VantComboBox>();
    const QPointer<QAbstractItemDelegate> delegate = box->view()->itemDelegate();
    QCOMPARE(delegate->metaObject()->className(), "QStyledItemDelegate");
    QStyledItemDelegate other;
    box->view()->setItemDelegate(&other);
    box.reset();
    QVERIFY(!delegate);
}

void SimpleWidgetsTest::menuStaysOnScreen_data()
{
    // With a menu of 100 by 80, against the edges of the area; QRect's right and bottom belong to it.
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QPoint>("result");
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const int left = area.left(), top = area.top(), right = area.right(), bottom = area.bottom();
    const auto row = [](const char* name, const QPoint& position, const QPoint& result) {
        QTest::newRow(name) << position << result;
    };
    row("fits", { left + 200, top + 200 }, { left + 200, top + 200 });
    row("touches the corner", { right - 100, bottom - 80 }, { right - 100, bottom - 80 });
    row("one too far right", { right - 99, top + 9 }, { right - 100, top + 9 });
    row("one too far down", { left + 9, bottom - 79 }, { left + 9, bottom - 80 });
    row("beyond the corner behind", { right + 50, bottom + 50 }, { right - 100, bottom - 80 });
    row("one too far left", { left - 1, top + 9 }, { left, top + 9 });
    row("above", { left + 9, top - 300 }, { left + 9, top });
}

void SimpleWidgetsTest::menuStaysOnScreen()
{
    QFETCH(QPoint, position);
    QFETCH(QPoint, result);
    VantMenu menu;
    menu.addAction(QStringLiteral("Action"));
    menu.setFixedSize(100, 80);
    // The offscreen platform moves a new window once, by the frame that it gives it.
    menu.winId();
    menu.move(position);
    bool shown = false;
    int moves = 0;
    Observer observer([&](QEvent* event) {
        shown = shown || event->type() == QEvent::Show;
        moves += shown && event->type() == QEvent::Move;
    });
    menu.installEventFilter(&observer);
    menu.show();
    QCOMPARE(menu.pos(), result);
    QCOMPARE(moves, position == result ? 0 : 1);
}

void SimpleWidgetsTest::labelHeight_data()
{
    QTest::addColumn<bool>("wraps");
    QTest::addColumn<QSizePolicy::Policy>("policy");
    QTest::addColumn<bool>("keepsHeight");
    QTest::newRow("wraps, minimum") << true << QSizePolicy::Minimum << true;
    QTest::newRow("wraps, preferred") << true << QSizePolicy::Preferred << false;
    QTest::newRow("wraps, minimum expanding") << true << QSizePolicy::MinimumExpanding << false;
    QTest::newRow("one line, minimum") << false << QSizePolicy::Minimum << false;
}

void SimpleWidgetsTest::labelHeight()
{
    QFETCH(bool, wraps);
    QFETCH(QSizePolicy::Policy, policy);
    QFETCH(bool, keepsHeight);
    QWidget window;
    VantLabel label(longText, &window);
    label.setWordWrap(wraps);
    label.setSizePolicy(QSizePolicy::Preferred, policy);
    window.show();
    int previous = 0;
    for (const int width : { 600, 300, 600 }) {
        label.resize(width, 10);
        QCOMPARE(label.minimumHeight(), keepsHeight ? label.heightForWidth(width) : 0);
        QVERIFY(!keepsHeight || label.minimumHeight() != previous);
        previous = label.minimumHeight();
    }
}

void SimpleWidgetsTest::messageLabelHeight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("wraps");
    QTest::newRow("wraps") << longText << true;
    QTest::newRow("one line") << longText << false;
    QTest::newRow("empty") << QString() << true;
}

void SimpleWidgetsTest::messageLabelHeight()
{
    QFETCH(QString, text);
    QFETCH(bool, wraps);
    QWidget window;
    MessageLabel label(&window);
    label.setWordWrap(wraps);
    label.setText(text);
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    QLabel twin(text);
    twin.setWordWrap(wraps);
    window.show();
    for (const int width : { 600, 300, 900 }) {
        label.resize(width, 500);
        QCOMPARE(label.size(), QSize(width, qMax(0, twin.heightForWidth(width))));
        QCOMPARE(label.minimumHeight(), label.maximumHeight());
    }
}

void SimpleWidgetsTest::footbar()
{
    VantFootbar bar;
    const QList<QWidget*> widgets { fixed(50, 20), fixed(60, 30), fixed(50, 20), fixed(60, 20) };
    widgets[0]->setMaximumHeight(QWIDGETSIZE_MAX); // the bar does not stretch it either
    bar.setMargins(1, 2, 3, 4); // undone by init
    bar.setSpacing(1);
    bar.pushRightWidget(widgets[2]);
    bar.pushLeftWidget(widgets[0]);
    bar.pushRightWidget(widgets[3]);
    bar.pushLeftWidget(widgets[1]);
    bar.init();
    bar.resize(600, bar.sizeHint().height());
    bar.show();
    QList<int> numbers { bar.height() };
    for (const QWidget* widget : widgets) {
        numbers << widget->x() << widget->y();
    }
    using Numbers = QList<int>;
    QCOMPARE(numbers,
        displayscale::pick(Numbers { 46, 20, 13, 80, 8, 460, 13, 520, 13 },
            Numbers { 50, 25, 15, 87, 10, 453, 15, 515, 15 },
            Numbers { 54, 30, 17, 95, 12, 445, 17, 510, 17 },
            Numbers { 62, 40, 21, 110, 16, 430, 21, 500, 21 }));

    bar.setMargins(3, 1, 5, 2);
    bar.setSpacing(7);
    QCOMPARE(bar.layout()->contentsMargins(),
        displayscale::pick(
            QMargins(3, 1, 5, 2), QMargins(3, 1, 6, 2), QMargins(4, 1, 7, 3), QMargins(6, 2, 10, 4)));
    QCOMPARE(bar.layout()->spacing(), displayscale::pick(7, 8, 10, 14));
}

void SimpleWidgetsTest::footbarWithoutWidgets()
{
    VantFootbar bar;
    bar.init();
    QCOMPARE(bar.layout()->count(), 1);
    QVERIFY(bar.layout()->itemAt(0)->spacerItem());
    QCOMPARE(bar.layout()->alignment(), Qt::AlignLeft);
    QWidget late;
    bar.pushLeftWidget(&late);
    QCOMPARE(late.parentWidget(), nullptr);
}

void SimpleWidgetsTest::mouseFilters_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<bool>("passesButtonFilter");
    QTest::addColumn<bool>("passesReleaseFilter");
    QTest::newRow("press") << QEvent::MouseButtonPress << false << true;
    QTest::newRow("release") << QEvent::MouseButtonRelease << false << false;
    QTest::newRow("double click") << QEvent::MouseButtonDblClick << false << true;
    QTest::newRow("move") << QEvent::MouseMove << true << true;
}

void SimpleWidgetsTest::mouseFilters()
{
    QFETCH(QEvent::Type, type);
    MouseButtonFilter buttonFilter;
    MouseReleaseFilter releaseFilter;
    const auto passes = [type](QObject* filter) {
        bool reached = false;
        Observer observer([&](QEvent* event) { reached = reached || event->type() == type; });
        QWidget widget;
        widget.installEventFilter(&observer);
        widget.installEventFilter(filter); // the last one installed comes first
        QMouseEvent event(type, { 5, 5 }, Qt::RightButton, Qt::RightButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
        return reached;
    };
    QTEST(passes(&buttonFilter), "passesButtonFilter");
    QTEST(passes(&releaseFilter), "passesReleaseFilter");
}

void SimpleWidgetsTest::lineEdit()
{
    VantLineEdit edit;
    QLineEdit* field = edit.getLineEdit();
    QCOMPARE(field->styleSheet(), sheetOf("lineedit"));
    for (const QLabel* label : { edit.getPreLabel(), edit.getPostLabel() }) {
        QCOMPARE(label->styleSheet(), sheetOf("lineedit_label"));
    }
    field->setStyleSheet(QString());
    edit.getPreLabel()->setStyleSheet(QString());
    edit.show();
    QCOMPARE(field->x(), 0);
    edit.getPreLabel()->setText(QStringLiteral("Before"));
    edit.getPostLabel()->setText(QStringLiteral("After"));
    edit.setSpacing(4);
    edit.setMargins(3, 1, 5, 2);
    QCOMPARE(edit.layout()->spacing(), displayscale::pick(4, 5, 6, 8));
    QCOMPARE(edit.layout()->contentsMargins(),
        displayscale::pick(
            QMargins(3, 1, 5, 2), QMargins(3, 1, 6, 2), QMargins(4, 1, 7, 3), QMargins(6, 2, 10, 4)));
    QCoreApplication::processEvents();
    QCOMPARE(field->x() - edit.getPreLabel()->geometry().right() - 1, edit.layout()->spacing());
    QVERIFY(edit.getPostLabel()->x() > field->geometry().right());

    QVERIFY(edit.validate());
    edit.setValidator([](const QString& text) { return text == QLatin1String("good"); });
    for (const QString& text : { QStringLiteral("bad"), QStringLiteral("good") }) {
        field->setText(text);
        QCOMPARE(edit.validate(), text == QLatin1String("good"));
        QCOMPARE(edit.getEditText(), text);
        QVERIFY(!field->property("error").isValid());
    }
    field->clear();
    edit.setValidator(nullptr);
    QVERIFY(edit.validate());
}

void SimpleWidgetsTest::lineEditError()
{
    VantLineEdit edit;
    QLineEdit* field = edit.getLineEdit();
    field->setStyleSheet(QStringLiteral(
        "QLineEdit { background: #102030; border: none } QLineEdit[error=\"true\"] { background: #A0B0C0 }"));
    edit.show();
    const auto background = [&] { return field->grab().toImage().pixelColor(1, 1); };
    for (const bool error : { true, false, true }) {
        edit.setError(error);
        QCOMPARE(field->property("error"), QVariant(error));
        field->setText(QStringLiteral("typed"));
        QCOMPARE(background(), error ? QColor(0xA0, 0xB0, 0xC0) : QColor(0x10, 0x20, 0x30));
    }
}

QTEST_MAIN(SimpleWidgetsTest)

#include "simple-widgets-test.moc"
