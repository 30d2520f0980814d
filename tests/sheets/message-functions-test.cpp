#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QElapsedTimer>
#include <QtTest>

#include <functional>

using sheets::soon;
using Show = std::function<int(QWidget*)>;
Q_DECLARE_METATYPE(Show)

namespace {

const QString title = QStringLiteral("Title");
const QString text = QStringLiteral("Text");
const QString more = QStringLiteral("More");

/** One function of the kit, and what a user gets to see of it. */
struct Function
{
    const char* name;
    Show show;
    const char* sheetIcon;
    QMessageBox::Icon boxIcon;
    const char* boxStyle;
    QStringList sheetButtons;
    QStringList boxButtons;
};

template <typename Call>
Show withoutResult(Call call)
{
    return [call](QWidget* parent) {
        call(parent);
        return 0;
    };
}

QList<Function> functions()
{
    const QString fine = QStringLiteral("Fine");
    const QString back = QStringLiteral("Back");
    const QString own = QStringLiteral("Own");
    const auto custom = [](const QString& okText, const QString& cancelText) -> Show {
        return [=](QWidget* parent) {
            return showConfirmMsgCustomBtn(title, text, { okText, cancelText }, parent);
        };
    };
    return {
        { "info", withoutResult([](QWidget* parent) { showInfoMsg(title, text, parent); }),
            "icon_information", QMessageBox::Information, "component.info_message_box", { fine }, { fine } },
        { "warning", withoutResult([](QWidget* parent) { showWarningMsg(title, text, parent); }),
            "icon_warning", QMessageBox::Warning, "component.warning_message_box", { fine }, { fine } },
        { "warning with two texts",
            withoutResult([](QWidget* parent) { showWarningMsg(title, text, more, parent); }), "icon_warning",
            QMessageBox::Warning, "component.warning_message_box", { fine }, { fine } },
        { "confirm", [](QWidget* parent) { return showConfirmMsg(title, text, parent); }, "icon_question",
            QMessageBox::Question, "component.confirm_message_box", { fine, back }, { fine, back } },
        { "own Ok", custom(own, {}), "icon_question", QMessageBox::Question, "component.confirm_message_box",
            { own, back }, { own, back } },
        { "own cancel", custom({}, own), "icon_question", QMessageBox::Question,
            "component.confirm_message_box", { fine, own }, { fine, own } },
        { "upgrading", withoutResult([](QWidget* parent) { showUpgradingMsg(title, text, parent); }),
            "icon_information", QMessageBox::Warning, "component.upgrading_message_box",
            { QStringLiteral("Get it"), back }, { fine } },
    };
}

QStringList textsOf(const QList<QAbstractButton*>& buttons)
{
    QStringList found;
    for (const QAbstractButton* button : buttons) {
        found += button->text();
    }
    return found;
}

} // namespace

class MessageFunctionsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void overWindow_data() { addFunctions(); }

    void overWindow();

    void withoutParent_data() { addFunctions(); }

    void withoutParent();
    void countdown_data();
    void countdown();
    void countsSeconds();

private:
    static void addFunctions();

    QTemporaryDir userFolder;
};

void MessageFunctionsTest::initTestCase()
{
    sheets::startKit(userFolder.path());
    QApplication::setQuitOnLastWindowClosed(false);
}

void MessageFunctionsTest::addFunctions()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("key");
    const QList<Function> all = functions();
    for (int i = 0; i < all.size(); ++i) {
        QTest::addRow("%s, Return", all[i].name) << i << int(Qt::Key_Return);
        if (all[i].sheetButtons.size() > 1) {
            QTest::addRow("%s, Esc", all[i].name) << i << int(Qt::Key_Escape);
        }
    }
}

void MessageFunctionsTest::overWindow()
{
    QFETCH(int, index);
    QFETCH(int, key);
    const Function function = functions().at(index);
    CoveredWindow window;
    QVERIFY(window.open());
    QWidget narrow(&window);
    narrow.resize(400, 300);
    soon(&window, [&] {
        const auto end = qScopeGuard([&] { window.press(key); });
        const VantMask* mask = window.shownMask();
        QVERIFY(mask);
        QCOMPARE(mask->parent(), &window);
        QCOMPARE(mask->size(), window.size());
        QCOMPARE(mask->palette().color(QPalette::Window), QColor(0, 0, 0, 20));
        const auto* sheet = mask->findChild<VantMessageSheet*>();
        QCOMPARE(sheet->width(), 360);
        const QPixmap iconShown = sheets::icon(sheet)->pixmap(Qt::ReturnByValue);
        QCOMPARE(iconShown.toImage(), getGlobalImage(function.sheetIcon).toImage());
        const auto* box = sheet->findChild<QDialogButtonBox*>();
        QCOMPARE(textsOf(box->buttons()), function.sheetButtons);
        QString all;
        for (const QLabel* label : sheets::texts(sheet)) {
            all += label->accessibleName();
        }
        QCOMPARE(all, qstrcmp(function.name, "warning with two texts") == 0 ? text + more : text);
    });
    const int result = function.show(&narrow);
    const bool tellsAnswer = function.boxIcon == QMessageBox::Question;
    QCOMPARE(result, !tellsAnswer ? 0 : key == Qt::Key_Return ? 0x400 : 0x800000);
    QCOMPARE(window.remains(), QString());
}

void MessageFunctionsTest::withoutParent()
{
    QFETCH(int, index);
    QFETCH(int, key);
    const Function function = functions().at(index);
    soon(qApp, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        const auto end = qScopeGuard([&] {
            QTest::keyClick(box, Qt::Key(key));
            if (box->isVisible()) {
                box->close();
            }
        });
        QCOMPARE(box->icon(), function.boxIcon);
        QCOMPARE(box->windowTitle(), title);
        QCOMPARE(box->text(), text);
        QCOMPARE(
            box->informativeText(), qstrcmp(function.name, "warning with two texts") == 0 ? more : QString());
        QCOMPARE(textsOf(box->buttons()), function.boxButtons);
        QCOMPARE(box->styleSheet(), getStyleSheet(function.boxStyle));
        QCOMPARE(box->button(QMessageBox::Ok)->styleSheet(), getStyleSheet("component.apply_button"));
        if (const QAbstractButton* cancel = box->button(QMessageBox::Cancel)) {
            QCOMPARE(cancel->styleSheet(), getStyleSheet("component.cancel_button"));
        }
    });
    const int result = function.show(nullptr);
    const bool tellsAnswer = function.boxIcon == QMessageBox::Question;
    QCOMPARE(result, !tellsAnswer ? 0 : key == Qt::Key_Return ? 0x400 : 0x400000);
}

void MessageFunctionsTest::countdown_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("defaultButton");
    QTest::newRow("3 seconds") << 3 << int(QMessageBox::Ok);
    QTest::newRow("no second") << 0 << int(QMessageBox::Ok);
    QTest::newRow("Discard") << 2 << int(QMessageBox::Discard);
    QTest::newRow("no button") << 2 << int(QMessageBox::NoButton);
}

/** With the seconds passed by hand. */
void MessageFunctionsTest::countdown()
{
    QFETCH(int, seconds);
    QFETCH(int, defaultButton);
    VantCountdownMessageBox box(seconds);
    QAbstractButton* okButton = box.button(QMessageBox::Ok);
    QCOMPARE(textsOf(box.buttons()), (QStringList { okButton->text(), QStringLiteral("Back") }));
    QCOMPARE(box.styleSheet(), getStyleSheet("component.info_message_box"));
    QCOMPARE(okButton->styleSheet(), getStyleSheet("component.apply_button"));
    QCOMPARE(box.button(QMessageBox::Discard)->styleSheet(), getStyleSheet("component.cancel_button"));
    if (defaultButton == QMessageBox::NoButton) {
        for (QAbstractButton* button : box.buttons()) {
            box.removeButton(button);
        }
        okButton = nullptr;
        box.addButton(QStringLiteral("Other"), QMessageBox::AcceptRole);
    } else {
        box.setDefaultButton(QMessageBox::StandardButton(defaultButton));
    }
    QSignalSpy finished(&box, SIGNAL(finished(int)));
    const auto shown = [&] { return okButton ? okButton->text() : QString(); };
    const auto expected = [&](int count) {
        return okButton ? QStringLiteral("Fine(%1)").arg(count) : QString();
    };
    QCOMPARE(shown(), expected(seconds));
    box.open();
    for (int left = seconds - 1; left >= 0; --left) {
        QCOMPARE(shown(), expected(left));
        QVERIFY(finished.isEmpty());
        QVERIFY(QMetaObject::invokeMethod(&box, "slotTick"));
    }
    QCOMPARE(shown(), expected(0));
    if (defaultButton != QMessageBox::NoButton) {
        QTRY_COMPARE(finished, QList<QList<QVariant>> { { defaultButton } });
    }
}

void MessageFunctionsTest::countsSeconds()
{
    VantCountdownMessageBox box(2);
    QElapsedTimer elapsed;
    soon(&box, [&] { QCOMPARE(box.button(QMessageBox::Ok)->text(), QStringLiteral("Fine(1)")); });
    elapsed.start();
    QCOMPARE(box.exec(), int(QMessageBox::Ok));
    QVERIFY2(elapsed.elapsed() >= 1800, qPrintable(QString::number(elapsed.elapsed())));
    QCOMPARE(box.button(QMessageBox::Ok)->text(), QStringLiteral("Fine(0)"));
}

QTEST_MAIN(MessageFunctionsTest)

#include "message-functions-test.moc"
