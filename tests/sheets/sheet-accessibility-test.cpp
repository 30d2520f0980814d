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
    void changedTexts();
    void input();

private:
    static QString textOf(QObject* object, QAccessible::Text which = QAccessible::Name)
    {
        QAccessibleInterface* found = QAccessible::queryAccessibleInterface(object);
        return found ? found->text(which) : QStringLiteral("nothing");
    }

    QTemporaryDir userFolder;
};

void SheetAccessibilityTest::initTestCase()
{
    sheets::startKit(userFolder.path());
}

void SheetAccessibilityTest::message()
{
    CoveredWindow window;
    QVERIFY(window.open());
    window.field->setFocus();
    VantMessageSheet sheet(VantMessageSheet::Question, QStringLiteral("Delete <b>3</b> files?"),
        QStringLiteral("They are<br>gone then."), &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&sheet);
        QCOMPARE(seen->role(), QAccessible::Dialog);
        QVERIFY(seen->state().modal && !seen->state().invisible);
        QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Delete 3 files?"));
        QCOMPARE(seen->text(QAccessible::Description), QStringLiteral("They are\ngone then."));
        const auto texts = sheets::texts(&sheet);
        QCOMPARE(textOf(texts.first()), QStringLiteral("Delete 3 files?"));
        QCOMPARE(textOf(texts.last()), QStringLiteral("They are\ngone then."));
        for (const auto which : { QMessageBox::Ok, QMessageBox::Discard }) {
            QCOMPARE(QAccessible::queryAccessibleInterface(sheet.button(which))->role(), QAccessible::Button);
            QCOMPARE(textOf(sheet.button(which)), sheet.button(which)->text());
        }
        // From the window down, a reader comes to the sheet, and to the focus in it.
        QAccessibleInterface* focus = QAccessible::queryAccessibleInterface(&window)->focusChild();
        QCOMPARE(focus->object(), texts.first());
        QVERIFY(focus->state().focused);
        QCOMPARE(focus->parent()->object(), &sheet);
    });
    sheet.exec();
    QCOMPARE(QAccessible::queryAccessibleInterface(&window)->focusChild()->object(), window.field);
}

void SheetAccessibilityTest::changedTexts()
{
    CoveredWindow window;
    QVERIFY(window.open());
    VantMessageSheet sheet(
        VantMessageSheet::Processing, QStringLiteral("1 %"), QStringLiteral("More"), &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet();
    sheet.setText(QStringLiteral("2 %"));
    sheet.setInformativeText({});
    QCOMPARE(textOf(&sheet), QStringLiteral("2 %"));
    QCOMPARE(textOf(&sheet, QAccessible::Description), QString());
}

void SheetAccessibilityTest::input()
{
    CoveredWindow window;
    QVERIFY(window.open());
    VantInputSheet sheet(QStringLiteral("New name"), &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QCOMPARE(QAccessible::queryAccessibleInterface(&sheet)->role(), QAccessible::Dialog);
        QCOMPARE(textOf(&sheet), QStringLiteral("New name"));
        QCOMPARE(textOf(sheet.getLineEdit()), QStringLiteral("New name"));
        QCOMPARE(QAccessible::queryAccessibleInterface(&window)->focusChild()->object(), sheet.getLineEdit());
    });
    sheet.exec();
}

QTEST_MAIN(SheetAccessibilityTest)

#include "sheet-accessibility-test.moc"
