#include "gallery-window.h"
#include "kit.h"
#include "languages.h"
#include "pages.h"
#include "places.h"
#include "snippets.h"
#include "support/files.h"
#include "support/guarded-test.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QAccessible>
#include <QClipboard>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace gallery;

namespace {

/** The visible widgets below @p object that can be used and have no name for those who cannot see them. */
QStringList namelessIn(QAccessibleInterface* object)
{
    QStringList nameless;
    const QAccessible::State state = object->state();
    const bool isUsable = state.focusable || qobject_cast<QAbstractButton*>(object->object());
    if (isUsable && !state.invisible && object->object() && object->text(QAccessible::Name).isEmpty()) {
        nameless << object->object()->metaObject()->className();
    }
    for (int child = 0; child < object->childCount(); ++child) {
        if (QAccessibleInterface* below = object->child(child)) {
            nameless << namelessIn(below);
        }
    }
    return nameless;
}

/** The sections in @p window without a snippet, or of a class that no header has. */
QStringList sectionsWithoutExample(const GalleryWindow& window)
{
    static const QString headers = [] {
        QString text;
        for (QDirIterator all(KIT_HEADERS, { "*.h" }, QDir::Files, QDirIterator::Subdirectories);
             all.hasNext();) {
            text += files::contentOf(all.next());
        }
        return text;
    }();
    QStringList missing;
    for (const QFrame* section : window.findChildren<QFrame*>("section")) {
        const QString key =
            section->findChildren<QPushButton*>(QRegularExpression("\\.")).constFirst()->objectName();
        const QStringList names = section->findChild<QLabel*>("class")->text().split(", ");
        const bool areThere = std::all_of(names.begin(), names.end(), [](const QString& name) {
            return headers.contains(QRegularExpression("class VANTKIT_EXPORT " + name + "\\s"));
        });
        if (!areThere || snippetOf(key).isEmpty()) {
            missing << key;
        }
    }
    return missing;
}

Options optionsIn(const QString& language)
{
    Options options;
    options.language = language;
    options.themes << VantTheme::of("default").folder();
    return options;
}

QJsonObject textsIn(const QString& language)
{
    const QString file = QDir(GALLERY_TEXTS).filePath(language + ".json");
    return QJsonDocument::fromJson(files::contentOf(file)).object();
}

} // namespace

/** Every page of the gallery can be drawn in every language, without a word on the log. */
class PagesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QVERIFY(startKit(VantTheme::of("default"), m_folder.path(), "enu"));
        useMadeUpPlaces(m_folder.filePath("places"));
    }

    void everyLanguage_data()
    {
        QTest::addColumn<QString>("language");
        for (const QString& code : languageCodes()) {
            QTest::newRow(qPrintable(code)) << code;
        }
    }

    void everyLanguage()
    {
        QFETCH(QString, language);
        ComponentStrings::getInstance().installStrings(VantTheme::of("default").strings(language));
        installTexts(language);
        GalleryWindow window(optionsIn(language));
        window.show();
        for (const QString& page : pageNames()) {
            window.takeUpSecondStart(page);
            window.settle();
            QCoreApplication::processEvents(); // draws it, once
            if (language == "enu") {
                QCOMPARE(namelessIn(QAccessible::queryAccessibleInterface(&window)).join('\n'), QString());
                QCOMPARE(sectionsWithoutExample(window).join('\n'), QString());
                for (const QScrollBar* bar : window.findChildren<QScrollBar*>()) {
                    QCOMPARE(qMin(bar->sizeHint().width(), bar->sizeHint().height()), 12); // the theme's
                }
            }
        }
        window.resize(window.minimumSize()); // on the last page, the file browser
        QTRY_COMPARE(window.findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);

        const QJsonObject english = textsIn("enu");
        const QJsonObject translated = textsIn(language);
        QCOMPARE(translated.keys(), english.keys());
        for (auto text = translated.begin(); text != translated.end(); ++text) {
            QVERIFY2(!text.value().toString().trimmed().isEmpty(), qPrintable(text.key()));
        }
    }

    void codeIsCopied()
    {
        GalleryWindow window(optionsIn("enu"));
        window.show();
        QTest::keyClick(window.findChild<QPushButton*>("buttons.icon"), Qt::Key_Space);
        QPointer<QWidget> code(QApplication::activeModalWidget());
        QTest::keyClick(code, Qt::Key_Return);
        QCOMPARE(QGuiApplication::clipboard()->text(), snippetOf("buttons.icon"));
        QTest::keyClick(code, Qt::Key_Escape);
        QTRY_VERIFY(!code);
    }

    void switchesByKeyboard()
    {
        GalleryWindow window(optionsIn("enu"));
        window.show();
        QSignalSpy startedAnew(&window, &GalleryWindow::startAnew);
        window.takeUpSecondStart("labels");
        for (int key : { Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Space }) {
            QTest::keyClick(window.focusWidget(), Qt::Key(key));
        }
        QCOMPARE(startedAnew.size(), 1);
        QCOMPARE(startedAnew[0][1].toInt(), 120); // the scale after 100 per cent
        QCOMPARE(window.layoutDirection(), Qt::RightToLeft);
        QCOMPARE(
            argumentsFor(startedAnew[0][0].value<Options>()).mid(0, 2), QStringList({ "--page", "labels" }));
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(PagesTest)

#include "pages-test.moc"
