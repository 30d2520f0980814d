#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/widgets/vant-button-path.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

class PathBarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void row_data();
    void row();
    void hiddenFolders_data();
    void hiddenFolders();
    void clicks();
    void clickInsideClick();
    void focus();
    void changesUnderOpenMenu();
};

namespace {

int designSize(int n)
{
    return displayscale::dpi() * n / 96;
}

/** A window with the bar between two fields. */
struct Window : QWidget
{
    explicit Window(int width = 400)
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(before);
        layout->addWidget(bar);
        layout->addWidget(after);
        setViewWidth(width);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    void setViewWidth(int width) const
    {
        bar->setFixedWidth(width + 2 * bar->frameWidth());
        layout()->activate();
    }

    QPushButton* button(int column) const { return qobject_cast<QPushButton*>(bar->cellWidget(0, column)); }

    QToolButton* folderButton() const { return bar->findChild<QToolButton*>(); }

    QStringList menuTexts() const
    {
        QStringList texts;
        const QList<QAction*> actions = folderButton()->menu()->actions();
        for (const QAction* action : actions) {
            texts << action->text();
        }
        return texts;
    }

    QLineEdit* before = new QLineEdit;
    QPointer<VantButtonPath> bar = new VantButtonPath;
    QLineEdit* after = new QLineEdit;
};

/** Opens the menu from the keyboard and chooses its entry number @p index. */
void chooseFromMenu(QToolButton* opener, int index)
{
    QTimer::singleShot(0, opener, [index] {
        QWidget* menu = QApplication::activePopupWidget();
        QVERIFY(qobject_cast<QMenu*>(menu));
        for (int count = 0; count <= index; ++count) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, Qt::Key_Return);
    });
    opener->setFocus(Qt::TabFocusReason);
    QTest::keyClick(opener, Qt::Key_Space);
}

/** Runs an event loop that does @p deed and goes round a few times before it ends. */
void runLoop(const std::function<void()>& deed)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, deed);
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

const QString fiveNames = QStringLiteral("hidden folder/hidden too/partly/visible name/last");
const QString threeNames = QStringLiteral("first folder/second folder/third folder");

/** The row of the five names, of which the first two are hidden and the third partly. */
void showEndOf(const Window& window)
{
    window.bar->refresh(fiveNames);
    window.setViewWidth(window.bar->columnViewportPosition(8) + window.bar->columnWidth(8)
        - window.bar->columnViewportPosition(4) - 10);
    window.bar->refresh(fiveNames);
}

} // namespace

void PathBarTest::initTestCase()
{
    const ThemeFolder theme;
    for (const char* image : { "folder", "bt_next" }) {
        theme.writeImage(QLatin1String(image), { 32, 32 });
    }
    theme.writeList({ QStringLiteral("folder"), QStringLiteral("bt_next") });
    theme.initializeImages(ImageManager::EagerLoad);
    QByteArray templates;
    for (const char* key : { "button_path", "button_path_name_button", "button_path_arrow",
             "button_path_change_folder_btn", "menu" }) {
        templates += QByteArray("==component.") + key + "==\nQWidget { border: none }\n";
    }
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("a.style"), templates) });
}

void PathBarTest::row_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("told");
    const QString deep = QStringLiteral("part/").repeated(300);
    const QString longName(100000, QLatin1Char('m'));
    QTest::newRow("separators") << QStringLiteral("////") << QString();
    QTest::newRow("separators around") << QStringLiteral("/a//b/") << QStringLiteral("a/b");
    QTest::newRow("ampersands") << QStringLiteral("R&D/A&&B/&&&/ a b") << QStringLiteral("R&D/A&&B/&&&/ a b");
    QTest::newRow("300 parts") << deep << deep.chopped(1);
    QTest::newRow("wider than a column can be")
        << QString(QStringLiteral("/a/") + longName) << QString(QStringLiteral("a/") + longName);
}

void PathBarTest::row()
{
    QFETCH(QString, path);
    QFETCH(QString, told);

    const Window window;
    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    window.bar->refresh(QStringLiteral("another/path/to/begin/with"));
    window.bar->refresh(path);
    const QStringList names = told.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QCOMPARE(window.bar->columnCount(), qMax(0, 2 * names.size() - 1));
    QCOMPARE(window.bar->height(), designSize(28));
    int rowWidth = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QPushButton* button = window.button(2 * i);
        const int textWidth = QFontMetrics(QPushButton().font()).horizontalAdvance(names.at(i));
        QCOMPARE(button->text(), QString(names.at(i)).replace(QLatin1Char('&'), QLatin1String("&&")));
        QCOMPARE(button->size(), QSize(designSize(textWidth + 16), designSize(26)));
        // What is wider than Qt lets a column be has all that it can get.
        QCOMPARE(window.bar->columnWidth(2 * i),
            qMin(button->width(), window.bar->horizontalHeader()->maximumSectionSize()));
        QCOMPARE(window.bar->getPath(2 * i), QStringList(names.mid(0, i + 1)).join(QLatin1Char('/')));
        rowWidth += button->width();
    }
    for (int column = 1; column < window.bar->columnCount(); column += 2) {
        QCOMPARE(window.bar->columnWidth(column), designSize(6));
        QCOMPARE(window.button(column)->size(), QSize(designSize(6), designSize(28)));
        QVERIFY(!window.button(column)->icon().isNull());
        window.button(column)->click();
        rowWidth += designSize(6);
    }
    QCOMPARE(window.folderButton()->isVisible(), rowWidth > 400);
    QCOMPARE(spy.count(), 0);
}

void PathBarTest::hiddenFolders_data()
{
    // What cannot be shown, in whole widths of a name and an arrow and pixels beside, and the folders listed.
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("listed");
    QTest::newRow("exactly fits") << 0 << 0 << 0;
    QTest::newRow("one pixel short") << 0 << 1 << 1;
    QTest::newRow("first hidden, arrow not") << 1 << -designSize(6) << 2;
    QTest::newRow("last pixel of first not hidden") << 1 << -designSize(6) - 1 << 1;
    QTest::newRow("last one alone") << 4 << 10 << 5;
}

void PathBarTest::hiddenFolders()
{
    QFETCH(int, steps);
    QFETCH(int, pixels);
    QFETCH(int, listed);
    const Window window;
    window.bar->refresh(QString(500, QLatin1Char('w')));
    QCOMPARE(window.bar->horizontalScrollBar()->value(), window.bar->columnWidth(0) - 400); // at once
    QStringList names;
    QStringList texts;
    for (int number = 1; number <= 5; ++number) {
        names << QStringLiteral("R&D %1").arg(number);
        texts << QStringLiteral("R&&D %1").arg(number);
    }
    const QString path = names.join(QLatin1Char('/'));
    window.bar->refresh(path);
    const int step = window.bar->columnWidth(0) + designSize(6);
    const int hidden = steps * step + pixels;
    window.setViewWidth(names.size() * step - designSize(6) - hidden);
    window.bar->refresh(path);
    QCOMPARE(window.bar->horizontalScrollBar()->value(), hidden);
    QCOMPARE(window.folderButton()->isVisible(), listed > 0);
    QCOMPARE(window.menuTexts(), QStringList(texts.mid(0, listed)));
    QCOMPARE(window.folderButton()->geometry(),
        QRect(designSize(1), designSize(1), designSize(26), designSize(26)));

    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    for (int index = 0; index < listed; ++index) {
        chooseFromMenu(window.folderButton(), index);
        QCOMPARE(
            spy.takeFirst(), QVariantList { QStringList(names.mid(0, index + 1)).join(QLatin1Char('/')) });
    }

    // A wider bar shows the whole row with its next refresh, a second look lists no folder twice.
    window.bar->updateColumnSize();
    QCOMPARE(window.menuTexts().size(), listed);
    window.setViewWidth(6 * step);
    window.bar->refresh(path);
    QVERIFY(window.folderButton()->isHidden());
    QCOMPARE(window.menuTexts(), QStringList());
}

// What an application does in its slot: the widgets of the row go at once, but for what was clicked.
void PathBarTest::clicks()
{
    for (const bool fromMenu : { false, true }) {
        for (const bool deletesBar : { false, true }) {
            const Window window(150);
            window.bar->refresh(threeNames);
            const QList<QAction*> actions = window.folderButton()->menu()->actions();
            const QList<QPointer<QObject>> others { window.button(0), window.button(1), actions.at(0) };
            const QPointer<QPushButton> button = window.button(2);
            const QPointer<QObject> clicked = fromMenu ? QPointer<QObject>(actions.at(1)) : button.data();
            QStringList told;
            bool keptInSlot = false;
            connect(window.bar, &VantButtonPath::sigUpdatePath, this, [&](const QString& path) {
                told << path;
                runLoop([&] {
                    if (deletesBar) {
                        delete window.bar;
                    } else {
                        window.bar->refresh(path);
                        QCOMPARE(others.count(nullptr), others.size());
                    }
                });
                keptInSlot = clicked && (fromMenu || button->isHidden());
            });
            if (fromMenu) {
                chooseFromMenu(window.folderButton(), 1);
            } else {
                QTest::mouseClick(button, Qt::LeftButton);
            }

            QCOMPARE(told, QStringList(QStringLiteral("first folder/second folder")));
            QVERIFY(keptInSlot);
            QTRY_VERIFY(!clicked);
            if (!deletesBar) {
                QCOMPARE(window.bar->findChildren<QPushButton*>().size(), 3);
                QTest::mouseClick(window.button(2), Qt::LeftButton);
                QCOMPARE(told.size(), 2);
            }
        }
    }
}

// The slot of a click runs a loop in which the next one comes, and the bar goes in the slot of that.
void PathBarTest::clickInsideClick()
{
    const Window window(150);
    window.bar->refresh(threeNames);
    QList<QPointer<QPushButton>> clicked { window.button(2) };
    int depth = 0;
    connect(window.bar, &VantButtonPath::sigUpdatePath, this, [&](const QString& path) {
        const int level = ++depth;
        if (level == 3) {
            delete window.bar;
            return;
        }
        runLoop([&] {
            window.bar->refresh(path);
            clicked << window.button(0);
            window.button(0)->click();
        });
        QVERIFY(clicked.at(level - 1));
    });
    window.button(2)->click();
    QCOMPARE(depth, 3);
    for (const QPointer<QPushButton>& button : clicked) {
        QTRY_VERIFY(!button);
    }
}

void PathBarTest::focus()
{
    const Window window;
    connect(window.bar, SIGNAL(sigUpdatePath(QString)), window.bar, SLOT(slotUpdatePath(QString)));
    showEndOf(window);
    window.before->setFocus();
    for (QWidget* stop : QWidgetList {
             window.folderButton(), window.button(4), window.button(6), window.button(8), window.after }) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), stop);
    }
    QTest::keyClick(window.after, Qt::Key_Backtab);
    QCOMPARE(window.focusWidget(), window.button(8));
    QTest::keyClick(window.button(8), Qt::Key_Left);
    QCOMPARE(window.focusWidget(), window.button(6));

    // A row that is built anew keeps it, and it visits no other widget on its way.
    QSignalSpy lost(window.before, &QLineEdit::editingFinished);
    for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Space }) {
        QTest::keyClick(window.button(6), key);
        QCOMPARE(window.bar->columnCount(), 7);
        QCOMPARE(window.focusWidget(), window.button(6));
    }
    chooseFromMenu(window.folderButton(), 1);
    QCOMPARE(window.bar->columnCount(), 3);
    QCOMPARE(window.focusWidget(), window.button(2));

    // Through an empty row, and from a name that is hidden then to the menu that it is in.
    window.bar->refresh(QString());
    window.bar->refresh(QStringLiteral("first"));
    QCOMPARE(window.focusWidget(), window.button(0));
    window.bar->refresh(fiveNames);
    QCOMPARE(window.focusWidget(), window.folderButton());
    QCOMPARE(lost.count(), 0);

    window.after->setFocus();
    window.bar->refresh(QStringLiteral("first"));
    QCOMPARE(window.focusWidget(), window.after);
}

void PathBarTest::changesUnderOpenMenu()
{
    const Window window(150);
    for (const bool deletesBar : { false, true }) {
        window.bar->refresh(threeNames);
        QTimer::singleShot(0, this, [&] {
            QVERIFY(QApplication::activePopupWidget());
            if (deletesBar) {
                delete window.bar;
            } else {
                window.bar->refresh(QString());
            }
            QVERIFY(!QApplication::activePopupWidget());
        });
        QTest::keyClick(window.folderButton(), Qt::Key_Space);
    }
    QVERIFY(!window.bar);
}

QTEST_MAIN(PathBarTest)

#include "path-bar-test.moc"
