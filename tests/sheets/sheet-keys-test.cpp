#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QShortcut>
#include <QtTest>

#include <functional>

Q_DECLARE_METATYPE(Qt::Key)

namespace {

const int ok = QMessageBox::Ok;
const int discard = QMessageBox::Discard;
const int stays = -1;

} // namespace

/** Which keys answer a sheet, and where the focus goes. */
class SheetKeysTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void answers_data();
    void answers();

    void hiddenSheets_data() { sheets::addBothSheets(); }

    void hiddenSheets();
    void messageTabs_data();
    void messageTabs();
    void messageTabsFromWindow();
    void tabsAfterChanges();
    void nothingTakesFocus();
    void inputTabs();
    void focusOnOpening();

    void shortcuts_data() { sheets::addBothSheets(); }

    void shortcuts();

private:
    static QByteArray focused(const CoveredWindow& window, const QWidget& sheet);
    static QList<QByteArray> walk(CoveredWindow& window, const QWidget& sheet, int key, int steps);

    QTemporaryDir userFolder;
};

void SheetKeysTest::initTestCase()
{
    sheets::startKit(userFolder.path());
}

void SheetKeysTest::answers_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("focus");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("typed");
    const auto row = [](const char* kind, const char* focus, Qt::Key key, int answer,
                         const char* typed = "") {
        QTest::addRow("%s, %s, %s", kind, focus, qPrintable(QKeySequence(key).toString()))
            << QByteArray(kind) << QByteArray(focus) << key << answer << QString::fromLatin1(typed);
    };
    for (const char* focus : { "window", "text", "Ok", "Discard" }) {
        row("question", focus, Qt::Key_Escape, discard);
        row("question", focus, Qt::Key_Return, ok);
        row("question", focus, Qt::Key_Enter, ok);
        row("question", focus, Qt::Key_Space, qstrcmp(focus, "Discard") == 0 ? discard : ok);
        row("question", focus, Qt::Key_A, stays);
        row("question", focus, Qt::Key_F1, stays);
    }
    row("information", "text", Qt::Key_Escape, stays);
    row("information", "text", Qt::Key_Return, ok);
    for (const Qt::Key key : { Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab, Qt::Key_A }) {
        row("processing", "window", key, stays);
        row("processing", "text", key, stays);
    }
    for (const char* focus : { "window", "field", "Ok", "Discard" }) {
        row("input", focus, Qt::Key_Escape, discard);
        row("input", focus, Qt::Key_Return, ok);
        row("input", focus, Qt::Key_Enter, ok);
        row("input", focus, Qt::Key_F1, stays);
    }
    row("input", "field", Qt::Key_Space, stays, " ");
    row("input", "field", Qt::Key_A, stays, "a");
    row("input", "window", Qt::Key_Space, ok);
    row("input", "window", Qt::Key_A, stays);
    row("input", "Ok", Qt::Key_Space, ok);
    row("input", "Discard", Qt::Key_Space, discard);
}

void SheetKeysTest::answers()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, focus);
    QFETCH(Qt::Key, key);
    CoveredWindow window;
    QVERIFY(window.open());
    VantSheet* sheet = sheets::make(kind == "input", &window);
    if (kind == "information" || kind == "processing") {
        static_cast<VantMessageSheet*>(sheet)->setMessageType(
            kind == "information" ? VantMessageSheet::Information : VantMessageSheet::Processing);
    }
    sheet->showSheet();
    const QHash<QByteArray, QWidget*> places { { "text", sheets::texts(sheet).first() },
        { "Ok", sheets::button(sheet, QMessageBox::Ok) },
        { "Discard", sheets::button(sheet, QMessageBox::Discard) },
        { "field", sheet->findChild<QLineEdit*>() } };
    if (focus == "window") {
        if (QApplication::focusWidget()) {
            QApplication::focusWidget()->clearFocus();
        }
    } else {
        places[focus]->setFocus();
    }
    QCOMPARE(QApplication::focusWidget(), places.value(focus));

    QSignalSpy finished(sheet, SIGNAL(finished(int)));
    window.press(key);
    QTEST(finished.isEmpty() ? stays : finished.takeFirst().first().toInt(), "answer");
    QVERIFY(finished.isEmpty());
    QCOMPARE(window.keys, QList<int>());
    QCOMPARE(window.field->text(), QString());
    if (places.value("field")) {
        QTEST(sheet->findChild<QLineEdit*>()->text(), "typed");
    }
}

/** Hidden by the application, and not done yet. */
void SheetKeysTest::hiddenSheets()
{
    QFETCH(bool, input);
    CoveredWindow window;
    QVERIFY(window.open());
    VantSheet* sheet = sheets::make(input, &window);
    sheet->showSheet();
    sheet->hide();
    window.button->setFocus();
    window.press(Qt::Key_F1);
    QCOMPARE(window.keys, input ? QList<int>() : QList<int> { Qt::Key_F1 });
    QVERIFY(!window.shownMask());
    sheet->showSheet();
    QVERIFY(window.shownMask());
}

QByteArray SheetKeysTest::focused(const CoveredWindow& window, const QWidget& sheet)
{
    const auto texts = sheets::texts(&sheet);
    const QHash<const QWidget*, QByteArray> names { { window.field, "window's field" },
        { window.button, "window's button" }, { texts.first(), "text" },
        { sheets::button(&sheet, QMessageBox::Ok), "Ok" },
        { sheets::button(&sheet, QMessageBox::Discard), "Discard" },
        { sheet.findChild<QLineEdit*>(), "field" }, { texts.value(1), "more" }, { nullptr, "none" } };
    return names.value(QApplication::focusWidget(), "stranger");
}

QList<QByteArray> SheetKeysTest::walk(CoveredWindow& window, const QWidget& sheet, int key, int steps)
{
    QList<QByteArray> places;
    for (int i = 0; i < steps; ++i) {
        window.press(key);
        places += focused(window, sheet);
    }
    return places;
}

void SheetKeysTest::messageTabs_data()
{
    using Type = VantMessageSheet::MessageType;
    QTest::addColumn<Type>("type");
    QTest::addColumn<QString>("more");
    QTest::addColumn<QList<QByteArray>>("tabs");
    QTest::newRow("question") << Type::Question << QString() << QList<QByteArray> { "Ok", "Discard", "text" };
    QTest::newRow("question with two texts")
        << Type::Question << QStringLiteral("More") << QList<QByteArray> { "more", "Ok", "Discard", "text" };
    QTest::newRow("information") << Type::Information << QString() << QList<QByteArray> { "Ok", "text" };
    QTest::newRow("processing") << Type::Processing << QString() << QList<QByteArray> { "text" };
}

void SheetKeysTest::messageTabs()
{
    QFETCH(VantMessageSheet::MessageType, type);
    QFETCH(QString, more);
    QFETCH(QList<QByteArray>, tabs);
    CoveredWindow window;
    QVERIFY(window.open());
    VantMessageSheet sheet(type, QStringLiteral("Text"), more, &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QCOMPARE(focused(window, sheet), QByteArray("text"));
        QCOMPARE(walk(window, sheet, Qt::Key_Tab, tabs.size() + 1), tabs + tabs.mid(0, 1));
        QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 1), tabs.mid(tabs.size() - 1));
        tabs.prepend(tabs.takeLast());
        std::reverse(tabs.begin(), tabs.end());
        QCOMPARE(walk(window, sheet, Qt::Key_Backtab, tabs.size()), tabs);
    });
    sheet.exec();
}

/** When the focus went elsewhere, the keys bring it back. */
void SheetKeysTest::messageTabsFromWindow()
{
    CoveredWindow window;
    QVERIFY(window.open());
    VantMessageSheet sheet(VantMessageSheet::Question, QStringLiteral("Text"), &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet();
    const auto from = [&](int key) {
        if (QApplication::focusWidget()) {
            QApplication::focusWidget()->clearFocus();
        }
        return walk(window, sheet, key, 1).first();
    };
    QCOMPARE(from(Qt::Key_Tab), QByteArray("text"));
    QCOMPARE(from(Qt::Key_Backtab), QByteArray("Discard"));
}

void SheetKeysTest::tabsAfterChanges()
{
    using Places = QList<QByteArray>;
    CoveredWindow window;
    QVERIFY(window.open());
    VantMessageSheet sheet(VantMessageSheet::Question, QStringLiteral("Text"), &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet();
    sheets::texts(&sheet).first()->setFocus();

    sheet.setInformativeText(QStringLiteral("More"));
    QCoreApplication::processEvents();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 1), Places { "more" });
    sheet.setInformativeText(QString()); // goes with the focus in it
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(sheet.isAncestorOf(window.focusWidget()) || !window.focusWidget());
    sheet.setText(QStringLiteral("Other text"));
    sheets::texts(&sheet).first()->setFocus();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 3), Places({ "Ok", "Discard", "text" }));

    sheet.button(QMessageBox::Discard)->setFocus();
    sheet.setMessageType(VantMessageSheet::Processing); // whose buttons are gone
    sheet.markFirstFocusWidget();
    sheet.markLastFocusWidget();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 2), Places({ "text", "text" }));
    sheet.setMessageType(VantMessageSheet::Upgrading);
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 3), Places({ "Ok", "Discard", "text" }));
    sheet.setMessageType(VantMessageSheet::Warning);
    QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 2), Places({ "Ok", "text" }));

    QSignalSpy finished(&sheet, SIGNAL(finished(int)));
    window.press(Qt::Key_Return);
    QCOMPARE(finished, QList<QList<QVariant>> { { ok } });
    QCOMPARE(window.remains(), QString());
}

/** Tab in a window in which nothing takes the focus comes to an end. */
void SheetKeysTest::nothingTakesFocus()
{
    CoveredWindow window;
    delete window.field;
    window.button->setFocusPolicy(Qt::NoFocus);
    window.field = nullptr;
    QVERIFY(window.open());
    VantMessageSheet sheet(VantMessageSheet::Processing, &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet();
    window.press(Qt::Key_Tab);
    window.press(Qt::Key_Backtab);
    QCOMPARE(window.keys, QList<int>());
}

void SheetKeysTest::inputTabs()
{
    CoveredWindow window;
    QVERIFY(window.open());
    VantInputSheet sheet(QStringLiteral("Text"), &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QCOMPARE(walk(window, sheet, Qt::Key_Tab, 4),
            QList<QByteArray>({ "Ok", "Discard", "window's field", "window's button" }));
        QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 3),
            QList<QByteArray>({ "window's field", "Discard", "Ok" }));
        QApplication::focusWidget()->clearFocus();
        QCOMPARE(walk(window, sheet, Qt::Key_Tab, 1), QList<QByteArray> { "none" });
    });
    sheet.exec();
}

void SheetKeysTest::focusOnOpening()
{
    CoveredWindow window;
    QVERIFY(window.open());
    window.field->setFocus();
    VantMessageSheet message(VantMessageSheet::Question, QStringLiteral("Text"), &window);
    VantMask::createMask(&message, &window);
    message.showSheet(); // which leaves the focus where it is
    QCOMPARE(focused(window, message), QByteArray("window's field"));
    message.quit();
    VantInputSheet input(QStringLiteral("Text"), &window);
    VantMask::createMask(&input, &window);
    input.showSheet();
    QCOMPARE(focused(window, input), QByteArray("field"));
    input.quit();
    QCOMPARE(focused(window, input), QByteArray("window's field"));
}

void SheetKeysTest::shortcuts()
{
    QFETCH(bool, input);
    CoveredWindow window;
    QVERIFY(window.open());
    window.button->setText(QStringLiteral("&Below"));
    QShortcut save(QKeySequence(Qt::CTRL | Qt::Key_S), &window);
    QSignalSpy saved(&save, SIGNAL(activated()));
    const auto press = [&window](Qt::Key key, Qt::KeyboardModifier modifier) {
        QTest::keyClick(window.windowHandle(), key, modifier);
    };
    VantSheet* sheet = sheets::make(input, &window);
    sheets::button(sheet, QMessageBox::Ok)->setText(QStringLiteral("&Own"));
    QSignalSpy finished(sheet, SIGNAL(finished(int)));
    sheet->showSheet();
    press(Qt::Key_S, Qt::ControlModifier);
    press(Qt::Key_B, Qt::AltModifier);
    QVERIFY(saved.isEmpty());
    QCOMPARE(window.clicks, 0);
    press(Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(finished, QList<QList<QVariant>> { { ok } });
    press(Qt::Key_S, Qt::ControlModifier);
    press(Qt::Key_B, Qt::AltModifier);
    QCOMPARE(saved.size(), 1);
    QTRY_COMPARE(window.clicks, 1);
}

QTEST_MAIN(SheetKeysTest)

#include "sheet-keys-test.moc"
