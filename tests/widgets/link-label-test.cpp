#include "support/guarded-test.h"
#include "support/pointer.h"

#include <vantkit-qt/widgets/link-label.h>

class LinkLabelTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void clicks_data();
    void clicks();
    void hover();
    void cursorIsGivenBack_data();
    void cursorIsGivenBack();
};

Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

struct Window
{
    Window()
    {
        widget.resize(200, 100);
        parent->setGeometry(0, 0, 120, 50);
        label->setGeometry(10, 10, 100, 30);
        widget.show();
        pointer::moveAway();
    }

    QWidget widget;
    QLabel* parent = new QLabel(&widget);
    QPointer<LinkLabel> label = new LinkLabel(QStringLiteral("Link"), parent);
};

bool isHand()
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::PointingHandCursor;
}

} // namespace

void LinkLabelTest::clicks_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void LinkLabelTest::clicks()
{
    QFETCH(Qt::MouseButton, button);
    LinkLabel label(QStringLiteral("Link"));
    QCOMPARE(label.getHyperLink(), QString());
    label.setHyperLink(QStringLiteral("https://host.invalid/?a=b"));
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    label.setSelection(0, 1);
    label.show();
    bool selectedInSlot = false;
    connect(&label, &LinkLabel::clicked, &label, [&] { selectedInSlot = label.hasSelectedText(); });
    QSignalSpy clicked(&label, &LinkLabel::clicked);

    QTest::mousePress(&label, button, {}, label.rect().bottomRight());
    QCOMPARE(clicked.size(), 1);
    // The base class, which ends a selection at a press, comes after the signal.
    QVERIFY(selectedInSlot);
    QCOMPARE(label.hasSelectedText(), button != Qt::LeftButton);
    QTest::mouseRelease(&label, button);
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(label.getHyperLink(), QStringLiteral("https://host.invalid/?a=b"));
}

void LinkLabelTest::hover()
{
    Window window;
    QFont font = window.label->font();
    font.setUnderline(true);
    font.setBold(true);
    for (const bool underlinedBefore : { false, true }) {
        font.setUnderline(underlinedBefore);
        window.label->setFont(font);
        pointer::moveTo(window.label);
        QVERIFY(isHand());
        QVERIFY(window.label->font().underline());
        pointer::moveAway();
        QVERIFY(!QGuiApplication::overrideCursor());
        QVERIFY(!window.label->font().underline());
        QVERIFY(window.label->font().bold());
    }
    window.label->setEnabled(false);
    pointer::moveTo(window.label);
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(!window.label->font().underline());
    pointer::moveAway();
}

void LinkLabelTest::cursorIsGivenBack_data()
{
    QTest::addColumn<QByteArray>("steps");
    for (const char* steps : { "enter leave", "enter leave enter leave", "enter disable",
             "enter disable leave", "enter disable enable leave", "enter disable leave enable enter leave",
             "enter hide", "enter delete", "enter disable delete", "enter disable enable delete",
             "disable enter leave delete" }) {
        QTest::newRow(steps) << QByteArray(steps);
    }
}

void LinkLabelTest::cursorIsGivenBack()
{
    QFETCH(QByteArray, steps);
    Window window;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor); // the application's own, below the label's
    const QList<QByteArray> list = steps.split(' ');
    for (const QByteArray& step : list) {
        if (step == "enter") {
            pointer::moveTo(window.label);
            QCOMPARE(isHand(), window.label->isEnabled());
        } else if (step == "leave") {
            pointer::moveAway();
        } else if (step == "hide") {
            window.label->hide();
        } else if (step == "delete") {
            delete window.label;
        } else {
            window.label->setEnabled(step == "enable");
        }
    }
    QVERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QVERIFY(!window.label || !window.label->font().underline());
    QGuiApplication::restoreOverrideCursor();
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(LinkLabelTest)

#include "link-label-test.moc"
