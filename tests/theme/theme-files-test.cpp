#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QMovie>
#include <QtTest>

#include <cmath>

namespace {

QString colorPattern()
{
    return QStringLiteral("(#[0-9A-Fa-f]{6}|transparent)");
}

QSet<QString> setOf(const QStringList& list)
{
    return { list.begin(), list.end() };
}

QSet<QString> stemsIn(const QString& subfolder, const QString& suffix)
{
    const QDir folder(defaulttheme::folder().filePath(subfolder));
    QSet<QString> stems;
    for (const QString& name : folder.entryList(QDir::Files)) {
        if (name.endsWith(suffix)) {
            stems += name.chopped(suffix.size());
        }
    }
    return stems;
}

/** The name without what stands behind the name of its source. */
QString sourceOf(QString name)
{
    return name.remove(QStringLiteral("@2x"))
        .remove(QRegularExpression(QStringLiteral("_(hover|click|disable|removed)$")));
}

double luminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& first, const QColor& second)
{
    const double a = luminance(first);
    const double b = luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/** The colour that @p property has in a block of declarations; invalid if it has none. */
QColor colorOf(const QString& declarations, const QString& property)
{
    const QRegularExpression pattern(QStringLiteral("(?:^|[;\\s])%1:\\s*%2").arg(property, colorPattern()));
    return QColor(pattern.match(declarations).captured(1));
}

/** The grounds that a selector's text may stand on, where its own rules name none. */
QList<QColor> pageGrounds()
{
    return { QColor(Qt::white), QColor(QStringLiteral("#F5F8FA")) };
}

} // namespace

class ThemeFilesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void images_data();
    void images();
    void styleSheetImages();
    void sources();
    void movie();
    void fileTypes();
    void keys();
    void sections_data();
    void sections();
    void contrastOfText_data();
    void contrastOfText();
    void strings_data();
    void strings();

private:
    QTemporaryDir userFolder;
};

void ThemeFilesTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
}

void ThemeFilesTest::images_data()
{
    QTest::addColumn<bool>("fourStates");
    for (const char* name : { "folder", "bt_next", "bg_tutorial_l", "bg_tutorial_r", "bg_tutorial_t",
             "bg_tutorial_b", "bg_tutorial_lt", "bg_tutorial_rt", "bg_tutorial_lb", "bg_tutorial_rb",
             "app_img", "icon_information", "icon_question", "icon_warning" }) {
        QTest::newRow(name) << false;
    }
    for (const char* name : { "bt_pagebar_back", "bt_pagebar_backend", "bt_pagebar_next",
             "bt_pagebar_nextend", "bt_pagebar_refresh", "bt_search_dropdown" }) {
        QTest::newRow(name) << true;
    }
}

// The log guard sees to it that no state falls back on the normal image.
void ThemeFilesTest::images()
{
    QFETCH(bool, fourStates);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(defaulttheme::imageList(QStringLiteral("images")).contains(name));
    const QPixmap normal = getGlobalImage(name, ImageManager::Normal);
    const QSize source = QPixmap(ImageManager::getInstance().getImageFullPath(name)).size();
    QCOMPARE(QSize(source.width() % 4, source.height() % 4), QSize(0, 0));
    QCOMPARE(normal.size(), source / 4);
    if (fourStates) {
        for (const auto state : { ImageManager::Hover, ImageManager::Click, ImageManager::Disable }) {
            const QPixmap image = getGlobalImage(name, state);
            QCOMPARE(image.size(), normal.size());
            QVERIFY(image.toImage() != normal.toImage());
        }
    }
}

// Every image that a template names is drawn, sharp at a device pixel ratio of 2 too, and none is drawn in
// vain.
void ThemeFilesTest::styleSheetImages()
{
    QSet<QString> named;
    const QRegularExpression url(QStringLiteral("url\\(TMPIMG_LOC/tmp_([^)]+)\\.png\\)"));
    for (const QString& path : defaulttheme::templates()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QCOMPARE(text.count(QStringLiteral("url(")), text.count(url));
        for (auto match = url.globalMatch(text); match.hasNext();) {
            const QString name = match.next().captured(1);
            named << name << name + QStringLiteral("@2x");
        }
    }
    QCOMPARE(setOf(defaulttheme::imageList(QStringLiteral("tmp_images"))), named);
    for (const QString& name : qAsConst(named)) {
        const QImage source(ImageManager::getInstance().getImageFullPath(name));
        const QImage temporary(ImageManager::getInstance().getTempImageFullPath(name));
        QVERIFY2(!source.isNull() && !temporary.isNull(), qUtf8Printable(name));
        QCOMPARE(temporary.size(), source.size() / 4);
        if (name.endsWith(QStringLiteral("@2x"))) {
            QCOMPARE(source.size(),
                2 * QImage(ImageManager::getInstance().getImageFullPath(name.chopped(3))).size());
        }
    }
}

void ThemeFilesTest::sources()
{
    const auto withoutState = [](const QSet<QString>& names) {
        QSet<QString> stems;
        for (const QString& name : names) {
            stems += sourceOf(name);
        }
        return stems;
    };
    QCOMPARE(withoutState(stemsIn(QStringLiteral("images"), QStringLiteral(".png"))),
        stemsIn(QStringLiteral("svg/images"), QStringLiteral(".svg"))
            + stemsIn(QStringLiteral("svg/marks"), QStringLiteral(".svg")));
    QCOMPARE(withoutState(stemsIn(QStringLiteral("filetypes"), QStringLiteral(".png"))),
        stemsIn(QStringLiteral("svg/filetypes"), QStringLiteral(".svg")));
}

// A turn of a second or so that goes on for ever, with nothing painted where the ring is not.
void ThemeFilesTest::movie()
{
    QCOMPARE(stemsIn(QStringLiteral("images"), QStringLiteral(".gif")),
        stemsIn(QStringLiteral("svg/movies"), QStringLiteral(".svg")));
    QMovie movie(ImageManager::getInstance().getImageFolder() + QStringLiteral("/processing.gif"));
    QCOMPARE(movie.loopCount(), -1);
    QVERIFY(movie.frameCount() >= 24);
    int duration = 0;
    QImage former;
    for (int frame = 0; frame < movie.frameCount(); ++frame) {
        QVERIFY(movie.jumpToFrame(frame));
        const QImage image = movie.currentImage();
        QCOMPARE(image.size(), QSize(128, 128));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(64, 64)), 0);
        QVERIFY(image != former);
        former = image;
        duration += movie.nextFrameDelay();
    }
    QVERIFY(duration >= 800 && duration <= 2000);
}

void ThemeFilesTest::fileTypes()
{
    QSet<QString> expected;
    for (const char* name : { "acc", "ai", "audio", "bkpi", "code", "doc", "exe", "fla", "htm", "idn",
             "image", "iso", "pdf", "ppt", "psd", "swf", "ttf", "txt", "video", "xls", "zip", "xxx" }) {
        expected << QLatin1String(name) << QLatin1String(name) + QStringLiteral("_removed");
    }
    QCOMPARE(stemsIn(QStringLiteral("filetypes"), QStringLiteral(".png")), expected);
    for (const QString& name : qAsConst(expected)) {
        QCOMPARE(QImage(defaulttheme::folder().filePath(QStringLiteral("filetypes/%1.png").arg(name))).size(),
            QSize(80, 80));
    }
}

void ThemeFilesTest::keys()
{
    QStringList defined;
    const QRegularExpression header(QStringLiteral("^==(.*)==$"), QRegularExpression::MultilineOption);
    for (const QString& path : defaulttheme::templates()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (auto match = header.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();) {
            defined += match.next().captured(1);
        }
    }
    defined.sort();
    QStringList expected = defaulttheme::kitKeys() << QStringLiteral("theme.tree");
    expected.sort();
    QCOMPARE(defined, expected);
}

void ThemeFilesTest::sections_data()
{
    QTest::addColumn<QString>("key");
    const QStringList keys = defaulttheme::kitKeys() << QStringLiteral("theme.tree");
    for (const QString& key : keys) {
        QTest::newRow(qUtf8Printable(key)) << key;
    }
}

void ThemeFilesTest::sections()
{
    QFETCH(QString, key);
    QString text = getStyleSheet(key, true);
    QCOMPARE(text.count(QLatin1Char('{')), text.count(QLatin1Char('}')));
    QVERIFY(!text.contains(
        QRegularExpression(QStringLiteral("/\\*|\\*/|IMG_LOC|==|\\d\\.\\d+px|\\d(pt|em)\\b"))));
    const bool isCombo = key == QLatin1String("component.combobox");
    QCOMPARE(text.count(QRegularExpression(QStringLiteral("%[1-9]"))), isCombo ? 2 : 0);
    if (isCombo) {
        text = text.arg(QStringLiteral("padding-left: 6px;"), QStringLiteral("border: 1px solid red;"));
    }
    // What Qt cannot parse it warns about, when the sheet is used.
    QWidget widget;
    widget.setStyleSheet(text);
    widget.ensurePolished();
}

void ThemeFilesTest::contrastOfText_data()
{
    sections_data();
}

// Text stands on the ground that its rule names, or else that the first rule for the same selector names.
void ThemeFilesTest::contrastOfText()
{
    QFETCH(QString, key);
    const QRegularExpression rule(QStringLiteral("([^{}]+)\\{([^}]*)\\}"));
    QMap<QString, QColor> grounds;
    const QString text = getStyleSheet(key, true);
    for (auto match = rule.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        const QString selector = found.captured(1).simplified();
        const QString plain = selector.section(QLatin1Char(':'), 0, 0).section(QLatin1Char('['), 0, 0);
        QColor ground = colorOf(found.captured(2), QStringLiteral("background-color"));
        if (!ground.isValid()) {
            ground = grounds.value(plain, QColor(Qt::transparent));
        }
        if (!grounds.contains(plain)) {
            grounds.insert(plain, ground);
        }
        const QColor color = colorOf(found.captured(2), QStringLiteral("color"));
        if (!color.isValid() || selector.endsWith(QStringLiteral(":disabled"))) {
            continue;
        }
        for (const QColor& below : ground.alpha() > 0 ? QList<QColor> { ground } : pageGrounds()) {
            const double ratio = contrast(color, below);
            QVERIFY2(ratio >= 4.5,
                qUtf8Printable(QStringLiteral("%1: %2 on %3 is %4")
                                   .arg(selector, color.name(), below.name())
                                   .arg(ratio)));
        }
    }
}

void ThemeFilesTest::strings_data()
{
    QTest::addColumn<QString>("locale");
    const QList<std::pair<const char*, const char*>> languages { { "enu", "en_US" }, { "jpn", "ja_JP" },
        { "deu", "de_DE" }, { "krn", "ko_KR" }, { "fra", "fr_FR" }, { "ita", "it_IT" }, { "esn", "es_ES" },
        { "rus", "ru_RU" }, { "dan", "da_DK" }, { "nor", "nb_NO" }, { "sve", "sv_SE" }, { "nld", "nl_NL" },
        { "plk", "pl_PL" }, { "hun", "hu_HU" }, { "trk", "tr_TR" }, { "csy", "cs_CZ" }, { "ptg", "pt_PT" },
        { "ptb", "pt_BR" }, { "cht", "zh_TW" }, { "chs", "zh_CN" } };
    for (const auto& [code, locale] : languages) {
        QTest::newRow(code) << QString::fromLatin1(locale);
    }
    QCOMPARE(stemsIn(QStringLiteral("strings"), QStringLiteral(".json")).size(), languages.size());
}

void ThemeFilesTest::strings()
{
    QFETCH(QString, locale);
    const QJsonObject words =
        defaulttheme::readJson(QStringLiteral("strings/%1.json").arg(QLatin1String(QTest::currentDataTag())));
    const QLocale language(locale);
    const QStringList days { QStringLiteral("monday"), QStringLiteral("tuesday"), QStringLiteral("wednesday"),
        QStringLiteral("thursday"), QStringLiteral("friday"), QStringLiteral("saturday"),
        QStringLiteral("sunday") };
    QStringList keys = days;
    for (int month = 1; month <= 12; ++month) {
        keys += QStringLiteral("month_") + QLocale::c().monthName(month, QLocale::ShortFormat).toLower();
        QCOMPARE(words.value(keys.last()).toString(), language.standaloneMonthName(month));
    }
    for (int day = 1; day <= 7; ++day) {
        // A calendar shows the first character of a weekday, which in Chinese would be the same for all in
        // the long form.
        const QString name = language.standaloneDayName(day);
        QCOMPARE(words.value(days[day - 1]).toString(),
            language.language() == QLocale::Chinese ? name.right(1) : name);
    }
    for (const char* key : { "ok", "cancel", "wizard_client_upgrade", "first_page", "prev_5_pages",
             "last_page", "next_5_pages", "pagebar_refresh", "today", "accessible_calendar",
             "accessible_calendar_prev_month", "accessible_calendar_next_month" }) {
        keys += QLatin1String(key);
        QVERIFY2(!words.value(keys.last()).toString().trimmed().isEmpty(), key);
    }
    QCOMPARE(setOf(words.keys()), setOf(keys));
}

QTEST_MAIN(ThemeFilesTest)
#include "theme-files-test.moc"
