#include "gallery-window.h"
#include "languages.h"
#include "pages.h"
#include "places.h"
#include "support/guarded-test.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

#include <QAccessible>
#include <QJsonDocument>
#include <QJsonObject>
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

QJsonObject textsIn(const QString& language)
{
    QFile file(QDir(GALLERY_TEXTS).filePath(language + ".json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

} // namespace

/** Every page of the gallery can be drawn in every language, without a word on the log. */
class PagesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        useLightGround();
        UIPathManager::getInstance().setPath("resource_path", defaultThemeFolder());
        UIPathManager::getInstance().setPath("user_data_path", m_folder.path());
        ImageManager::getInstance().initialize(ImageManager::LazyLoad);
        StyleManager::getInstance().initialize(templateFiles(defaultThemeFolder()));
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
        ComponentStrings::getInstance().installStrings(componentStrings(defaultThemeFolder(), language));
        installTexts(language);
        GalleryWindow window(pageNames().first(), language);
        window.show();
        for (const QString& page : pageNames()) {
            window.takeUpSecondStart(page);
            window.settle();
            QCoreApplication::processEvents(); // draws it, once
            if (language == "enu") {
                QCOMPARE(namelessIn(QAccessible::queryAccessibleInterface(&window)).join('\n'), QString());
            }
        }

        const QJsonObject english = textsIn("enu");
        const QJsonObject translated = textsIn(language);
        QCOMPARE(translated.keys(), english.keys());
        for (auto text = translated.begin(); text != translated.end(); ++text) {
            QVERIFY2(!text.value().toString().trimmed().isEmpty(), qPrintable(text.key()));
        }
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(PagesTest)

#include "pages-test.moc"
