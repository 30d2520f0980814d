#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QAccessible>
#include <QtTest>

/** What a screen reader hears of a sheet. */
class SheetAccessibilityTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void message();
    void input();

private:
    QTemporaryDir userFolder;
};

namespace {

QString textOf(QObject* object, QAccessible::Text which = QAccessible::Name)
{
    return QAccessible::queryAccessibleInterface(object)->text(which);
}

/** What the reader comes to from the window down. */
QAccessibleInterface* focusIn(QWidget* window)
{
    return QAccessible::queryAccessibleInterface(window)->focusChild();
}

} // namespace

void SheetAccessibilityTest::initTestCase()
{
    sheets::startKit(userFolder.path());
}

void SheetAccessibilityTest::message()
{
    CoveredWindow window;
    QVERIFY(window.open());
    window.field->setFocus();
    VantMessageSheet sheet(
        VantMessageSheet::Question, "Delete <b>3</b> files?", "They are<br>gone then.", &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&sheet);
        QCOMPARE(seen->role(), QAccessible::Dialog);
        QVERIFY(seen->state().modal && !seen->state().invisible);
        for (QObject* object : { static_cast<QObject*>(&sheet), focusIn(&window)->object() }) {
            QCOMPARE(textOf(object), QString("Delete 3 files?"));
        }
        QCOMPARE(textOf(&sheet, QAccessible::Description), QString("They are\ngone then."));
        QCOMPARE(textOf(sheets::labels(&sheet).last()), QString("They are\ngone then."));
        QCOMPARE(textOf(sheet.button(QMessageBox::Discard)), QString("Back"));
        QVERIFY(focusIn(&window)->state().focused);
        QCOMPARE(focusIn(&window)->parent()->object(), &sheet);
        sheet.setText("2 %");
        sheet.setInformativeText({});
        QCOMPARE(textOf(&sheet), QString("2 %"));
        QCOMPARE(textOf(&sheet, QAccessible::Description), QString());
    });
    sheet.exec();
    QCOMPARE(focusIn(&window)->object(), window.field);
}

void SheetAccessibilityTest::input()
{
    CoveredWindow window;
    QVERIFY(window.open());
    VantInputSheet sheet("New name", &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet();
    QCOMPARE(QAccessible::queryAccessibleInterface(&sheet)->role(), QAccessible::Dialog);
    QCOMPARE(textOf(&sheet), QString("New name"));
    QCOMPARE(textOf(sheet.getLineEdit()), QString("New name"));
    QCOMPARE(focusIn(&window)->object(), sheet.getLineEdit());
}

QTEST_MAIN(SheetAccessibilityTest)

#include "sheet-accessibility-test.moc"
