#include "support/guarded-test.h"
#include "support/pointer.h"

#include <vantkit-qt/widgets/link-label.h>

class LinkLabelTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void clicks();
    void underline();
    void cursorIsGivenBack_data();
    void cursorIsGivenBack();
};

namespace {

struct Window : QLabel
{
    Window()
    {
        resize(200, 100);
        label->setGeometry(10, 10, 80, 30);
        pointer::moveAway();
        show();
        if (!QTest::qWaitForWindowExposed(this)) {
            qFatal("The window does not show");
        }
    }

    QPointer<LinkLabel> label = new LinkLabel(QStringLiteral("Link"), this);
};

bool isHand()
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::PointingHandCursor;
}

} // namespace

void LinkLabelTest::clicks()
{
    for (const Qt::MouseButton button : { Qt::LeftButton, Qt::RightButton, Qt::MiddleButton }) {
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
        // The base class, which ends a selection at a press of the left button, comes after the signal.
        QVERIFY(selectedInSlot);
        QCOMPARE(label.hasSelectedText(), button != Qt::LeftButton);
        QTest::mouseRelease(&label, button);
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(label.getHyperLink(), QStringLiteral("https://host.invalid/?a=b"));
    }
}

void LinkLabelTest::underline()
{
    Window window;
    QFont font = window.label->font();
    font.setBold(true);
    for (const bool underlinedBefore : { false, true }) {
        font.setUnderline(underlinedBefore);
        window.label->setFont(font);
        pointer::moveTo(window.label);
        QVERIFY(window.label->font().underline());
        pointer::moveAway();
        QVERIFY(!window.label->font().underline());
        QVERIFY(window.label->font().bold());
    }
    window.label->setEnabled(false);
    pointer::moveTo(window.label);
    QVERIFY(!window.label->font().underline());
}

void LinkLabelTest::cursorIsGivenBack_data()
{
    QTest::addColumn<QByteArray>("steps");
    for (const char* steps :
        { "enter leave enter leave", "enter disable", "enter disable leave", "enter disable enable leave",
            "enter disable leave enable enter leave", "enter hide", "enter delete", "enter disable delete",
            "enter disable enable delete", "disable enter leave delete" }) {
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
        QVERIFY(pointer::act(window.label, step));
        QVERIFY(step != "enter" || isHand() == window.label->isEnabled());
    }
    QVERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QVERIFY(!window.label || !window.label->font().underline());
    QGuiApplication::restoreOverrideCursor();
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(LinkLabelTest)

#include "link-label-test.moc"
