#include "gallery-window.h"
#include "help.h"
#include "support/guarded-test.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTextBlock>
#include <QTimer>
#include <QtTest>

using namespace gallery;

namespace {

const int patience = 20000;

void installLanguage(const QString& language)
{
    ComponentStrings::getInstance().installStrings(componentStrings(defaultThemeFolder(), language));
    installTexts(language);
}

/** Has every request of this process go to @p port of this computer. */
void leadRequestsTo(quint16 port)
{
    QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, "127.0.0.1", port });
}

Help* openHelp()
{
    return qobject_cast<Help*>(QApplication::activeModalWidget());
}

QTextBrowser* browserOf(const Help* help)
{
    return help->findChild<QTextBrowser*>();
}

QTextDocument* documentOf(const Help* help)
{
    return browserOf(help)->document();
}

QStringList imagesIn(const QTextDocument* document)
{
    QStringList images;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextImageFormat format = it.fragment().charFormat().toImageFormat();
            if (format.isValid()) {
                images << format.name();
            }
        }
    }
    return images;
}

} // namespace

/** The help of the gallery, on a network that says no. */
class GalleryHelpTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void opens_data();
    void opens();
    void goesWithItsPage();
    void leavesSheetsAlone();
    void asksForPatience();
    void cleanup();

private:
    void openGallery(const QString& page, const QString& language = "enu");
    void pressHelpButton();
    void checkHelp(const QString& title, int images);

    QTemporaryDir m_folder;
    std::unique_ptr<GalleryWindow> m_window;
    quint16 m_deafPort = 0;
};

void GalleryHelpTest::initTestCase()
{
    QTcpServer server; // gone at the end, and its port with it
    QVERIFY(server.listen(QHostAddress::LocalHost));
    m_deafPort = server.serverPort();

    useLightGround();
    UIPathManager::getInstance().setPath("resource_path", defaultThemeFolder());
    UIPathManager::getInstance().setPath("user_data_path", m_folder.path());
    installLanguage("enu");
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(templateFiles(defaultThemeFolder()));
}

void GalleryHelpTest::cleanup()
{
    m_window.reset();
    GuardedTest::cleanup();
}

void GalleryHelpTest::openGallery(const QString& page, const QString& language)
{
    leadRequestsTo(m_deafPort);
    installLanguage(language);
    m_window = std::make_unique<GalleryWindow>(page, language);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void GalleryHelpTest::opens_data()
{
    QTest::addColumn<QString>("overview");
    QTest::addColumn<QString>("files");
    QTest::addColumn<QString>("tree");

    QTest::newRow("enu") << "The gallery"
                         << "The file browser"
                         << "Tree";
    QTest::newRow("deu") << "Die Galerie"
                         << "Der Dateibrowser"
                         << "Baum";
    QTest::newRow("esn") << "La galería"
                         << "El explorador de archivos"
                         << "Árbol";
    QTest::newRow("fra") << "La galerie"
                         << "L’explorateur de fichiers"
                         << "Arborescence";
    QTest::newRow("jpn") << "ギャラリー"
                         << "ファイルブラウザー"
                         << "ツリー";
    QTest::newRow("chs") << "控件库"
                         << "文件浏览器"
                         << "树";
    for (const char* other : { "krn", "ita", "rus", "dan", "nor", "sve", "nld", "plk", "hun", "trk", "csy",
             "ptg", "ptb", "cht" }) {
        QTest::newRow(other) << "The gallery"
                             << "The file browser"
                             << "Tree";
    }
}

void GalleryHelpTest::opens()
{
    QFETCH(QString, overview);
    QFETCH(QString, files);
    QFETCH(QString, tree);

    openGallery("buttons", QTest::currentDataTag());
    pressHelpButton();
    checkHelp(overview, 1);
    openGallery("files", QTest::currentDataTag());
    QTest::keyClick(m_window->focusWidget(), Qt::Key_F1);
    checkHelp(files, 1);
    openGallery("tree", QTest::currentDataTag());
    pressHelpButton();
    checkHelp(tree, 1);
}

void GalleryHelpTest::pressHelpButton()
{
    for (auto* button : m_window->findChildren<QPushButton*>()) {
        if (button->text() == text("window.help")) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
}

void GalleryHelpTest::checkHelp(const QString& title, int images)
{
    const Help* help = openHelp();
    QVERIFY(help);
    QCOMPARE(help->windowTitle(), text("window.help"));
    QTRY_COMPARE_WITH_TIMEOUT(documentOf(help)->firstBlock().text(), title, patience);
    const QStringList names = imagesIn(documentOf(help));
    QCOMPARE(names.size(), images);
    for (const QString& name : names) {
        const QVariant content = browserOf(help)->loadResource(QTextDocument::ImageResource, name);
        QVERIFY2(!content.value<QPixmap>().isNull(), qPrintable(name));
    }
}

void GalleryHelpTest::goesWithItsPage()
{
    openGallery("fields");
    QTest::keyClick(m_window->findChild<QLineEdit*>(), Qt::Key_F1);
    QVERIFY(openHelp());
    m_window->takeUpSecondStart("labels");
    QTRY_VERIFY_WITH_TIMEOUT(!m_window->findChild<Help*>(), patience);
}

void GalleryHelpTest::leavesSheetsAlone()
{
    openGallery("sheets");
    QString seen;
    QTimer::singleShot(0, m_window.get(), [&] {
        for (auto* sheet : m_window->findChildren<VantSheet*>()) {
            if (sheet->isVisible()) {
                QTest::keyClick(m_window.get(), Qt::Key_F1);
                seen = openHelp() ? "help" : "the sheet alone";
                QMetaObject::invokeMethod(sheet, "quit");
            }
        }
    });
    m_window->enterState("question");
    QCOMPARE(seen, QString("the sheet alone"));
}

void GalleryHelpTest::asksForPatience()
{
    openGallery("buttons");
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    leadRequestsTo(silent.serverPort());

    QTest::keyClick(m_window->focusWidget(), Qt::Key_F1);
    Help* help = openHelp();
    QVERIFY(help);
    QCOMPARE(documentOf(help)->toPlainText(), QString());
    QTRY_COMPARE_WITH_TIMEOUT(documentOf(help)->toPlainText(), text("window.help.fetching"), patience);
    QVERIFY(!help->isAnswered());
    Q_EMIT help->sigAbortRequest();
    QTRY_COMPARE_WITH_TIMEOUT(documentOf(help)->firstBlock().text(), QString("The gallery"), patience);
}

QTEST_MAIN(GalleryHelpTest)
#include "gallery-help-test.moc"
