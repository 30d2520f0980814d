#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "theme/default-theme.h"

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
    void linkClicks();
    void linkHover_data();
    void linkHover();

private:
    QTemporaryDir userFolder;
};

namespace {

const QString longText = QStringLiteral("word ").repeated(60);

int px(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

} // namespace

void SimpleWidgetsTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
}

void SimpleWidgetsTest::looks()
{
    const char* const keys[] { "apply_button", "cancel_button", "select_paging_button",
        "nonselect_paging_button", "default_button", "red_button" };
    for (int type = 0; type < 6; ++type) {
        QCOMPARE(VantButton("&Text", type).styleSheet(), getStyleSheet(QString("component.") + keys[type]));
    }
    QCOMPARE(VantLabel().styleSheet(), getStyleSheet("component.label"));
}

void SimpleWidgetsTest::comboBox()
{
    // The padding keeps its fraction, and the border its pixel.
    auto box = std::make_unique<VantComboBox>();
    const QString padding = QString::number(6 * displayscale::dpi() / 96.0);
    QCOMPARE(box->styleSheet(),
        getStyleSheet("component.combobox")
                .arg("padding-left: " + padding + "px; \npadding-right: " + padding + "px;",
                    "border: 1px solid #C8D2DC;")
            + getStyleSheet("component.scrollbar"));

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
        menu.setFixedSize(100, 80);
        menu.winId(); // the offscreen platform moves a new window once, by the frame that it gives it
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
            twin.setStyleSheet(label.styleSheet());
            twin.ensurePolished();
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
    MessageLabel label;
    label.setWordWrap(true);
    label.setText("<p>" + QString(300, 'x'));
    QVERIFY(label.heightForWidth(100) > 10 * label.fontMetrics().height()); // a long word is broken
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
    const int last = 600 - px(20) - 60;
    QCOMPARE(bar.height(), 30 + 2 * px(8));
    QCOMPARE(widgets[0]->pos(), QPoint(px(20), px(8) + 5));
    QCOMPARE(widgets[1]->pos(), QPoint(px(20) + 50 + px(10), px(8)));
    QCOMPARE(widgets[2]->pos(), QPoint(last - px(10) - 50, px(8) + 5));
    QCOMPARE(widgets[3]->pos(), QPoint(last, px(8) + 5));
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
    before->setStyleSheet(QString());
    edit.show();
    QCOMPARE(field->x(), 0);
    before->setText("&Before");
    edit.getPostLabel()->setText("After");
    edit.setSpacing(7);
    edit.setMargins(3, 1, 5, 2);
    QCOMPARE(edit.layout()->contentsMargins(), QMargins(px(3), px(1), px(5), px(2)));
    QCoreApplication::processEvents();
    QCOMPARE(field->x() - before->geometry().right() - 1, px(7));
    QVERIFY(edit.getPostLabel()->x() > field->geometry().right());

    QVERIFY(edit.validate());
    edit.setValidator([](const QString& text) { return text == "good"; });
    QVERIFY(!edit.validate());
    field->setText("good");
    QVERIFY(edit.validate() && edit.getEditText() == "good");

    QVERIFY(QTest::qWaitForWindowActive(&edit));
    edit.setFocus();
    QVERIFY(field->hasFocus());
    field->clearFocus();
    QTest::keyClick(&edit, Qt::Key_B, Qt::AltModifier);
    QVERIFY(field->hasFocus());
}

void SimpleWidgetsTest::linkClicks()
{
    for (const Qt::MouseButton button : { Qt::LeftButton, Qt::RightButton }) {
        LinkLabel label("Link");
        label.setTextInteractionFlags(Qt::TextSelectableByMouse);
        label.setSelection(0, 1);
        label.show();
        QVector<bool> selectedInSlot;
        connect(&label, &LinkLabel::clicked, this, [&] { selectedInSlot << label.hasSelectedText(); });

        // The base class, which ends a selection at a press of the left button, comes after the signal.
        QTest::mouseClick(&label, button, {}, label.rect().bottomRight());
        QCOMPARE(selectedInSlot, QVector<bool> { true });
        QCOMPARE(label.hasSelectedText(), button != Qt::LeftButton);
    }

    // A slot may delete the label, and a new font makes it larger.
    QLabel window;
    window.resize(200, 100);
    auto* label = new LinkLabel("Link", &window);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(label, &LinkLabel::clicked, this, [label] { delete label; });
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const int height = label->sizeHint().height();
    label->setFont(QFont("sans-serif", 30));
    QVERIFY(label->sizeHint().height() > height);
    pointer::press(label);
    QCOMPARE(window.findChild<LinkLabel*>(), nullptr);
}

void SimpleWidgetsTest::linkHover_data()
{
    QTest::addColumn<QByteArray>("steps");
    for (const char* steps : { "enter leave enter leave", "enter disable leave enable enter leave",
             "enter disable enable leave", "enter delete", "enter disable enable delete" }) {
        QTest::newRow(steps) << QByteArray(steps);
    }
}

void SimpleWidgetsTest::linkHover()
{
    QFETCH(QByteArray, steps);
    pointer::moveAway();
    QLabel window;
    window.resize(200, 100);
    const QPointer<LinkLabel> label = new LinkLabel("Link", &window);
    label->setGeometry(10, 10, 80, 30);
    label->setFont(QFont("sans-serif", 10, QFont::Bold));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QGuiApplication::setOverrideCursor(Qt::WaitCursor); // the application's own, below the label's
    const QList<QByteArray> list = steps.split(' ');
    for (const QByteArray& step : list) {
        QVERIFY(pointer::act(label, step));
        const bool isLink = step == "enter" && label->isEnabled();
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(
            QGuiApplication::overrideCursor()->shape(), isLink ? Qt::PointingHandCursor : Qt::WaitCursor);
        QVERIFY(!label || (label->font().underline() == isLink && label->font().bold()));
    }
    QGuiApplication::restoreOverrideCursor();
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(SimpleWidgetsTest)

#include "simple-widgets-test.moc"
