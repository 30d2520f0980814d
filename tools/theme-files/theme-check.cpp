#include "theme-check.h"

#include "check-images.h"
#include "check-styles.h"
#include "json-file.h"
#include "kit-requests.h"

#include <vantkit-qt/theme/vant-theme.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace {

const QString english = QStringLiteral("enu");

/** The files of a theme that hold text. */
struct TextFiles
{
    explicit TextFiles(const QString& folder);

    Findings findings; // of reading them; it comes first, as the others need it
    JsonFile images;
    JsonFile palette;
    std::vector<JsonFile> words;
    std::vector<Section> sections;
};

TextFiles::TextFiles(const QString& folder)
    : images(folder, QStringLiteral("images.json"), Finding::Unreadable, findings)
    , palette(folder, QStringLiteral("palette.json"), Finding::Flaw, findings)
{
    const VantTheme theme(folder);
    for (const QString& code : theme.languages()) {
        words.emplace_back(
            folder, QStringLiteral("strings/%1.json").arg(code), Finding::Unreadable, findings);
    }
    if (!theme.languages().contains(english)) {
        findings.push_back({ { QStringLiteral("strings/enu.json"), 0 },
            QStringLiteral("is missing, and gives other languages what they lack"),
            words.empty() ? Finding::Unreadable : Finding::Flaw });
    }
    Templates templates = readTemplates(folder);
    if (theme.templates().empty()) {
        findings.push_back({ { QStringLiteral("templates"), 0 }, QStringLiteral("there is no file *.style"),
            Finding::Unreadable });
    }
    findings.insert(findings.end(), templates.findings.begin(), templates.findings.end());
    sections = std::move(templates.sections);
    checkSheets(sections, findings);
}

// The menu of months shows the first three characters.
void checkMonths(const JsonFile& words, Findings& findings)
{
    std::map<QString, QString> seen;
    for (const QString& key : kitrequests::months()) {
        const QString shown = words.object.value(key).toString().left(3);
        const auto [other, isNew] = seen.emplace(shown, key);
        if (!isNew && !shown.isEmpty()) {
            findings.push_back({ words.placeOfKey(key),
                QStringLiteral("\"%1\" looks like \"%2\" in the menu of months: \"%3\"")
                    .arg(key, other->second, shown) });
        }
    }
}

void checkWords(const JsonFile& words, Findings& findings)
{
    for (const QString& key : kitrequests::strings()) {
        if (!words.object.contains(key)) {
            findings.push_back({ { words.name, 0 }, QStringLiteral("\"%1\" is missing").arg(key) });
        } else if (words.object.value(key).toString().trimmed().isEmpty()) {
            findings.push_back({ words.placeOfKey(key), QStringLiteral("\"%1\" is empty").arg(key) });
        }
    }
    checkMonths(words, findings);
}

void checkPalette(const JsonFile& palette, Findings& findings)
{
    for (const QString& name : kitrequests::colours()) {
        if (!palette.object.contains(name)) {
            findings.push_back({ { palette.name, 0 }, QStringLiteral("\"%1\" is missing").arg(name) });
        }
    }
    for (auto colour = palette.object.begin(); colour != palette.object.end(); ++colour) {
        if (!QColor::isValidColor(colour.value().toString())) {
            findings.push_back({ palette.placeOfKey(colour.key()),
                QStringLiteral("\"%1\" is no colour").arg(colour.key()) });
        }
    }
}

std::vector<QColor> pagesOf(const JsonFile& palette)
{
    std::vector<QColor> pages;
    for (const char* name : { "panel", "ground" }) {
        const QString colour = palette.object.value(QLatin1String(name)).toString();
        pages.push_back(QColor::isValidColor(colour) ? QColor(colour) : QColor(Qt::white));
    }
    return pages;
}

} // namespace

Findings checkTheme(const QString& folder)
{
    TextFiles files(folder);
    Findings& findings = files.findings;
    // Of a file that cannot be read there is nothing more to say.
    if (!files.sections.empty()) {
        checkStyles(files.sections, findings);
        checkContrast(files.sections, pagesOf(files.palette), findings);
    }
    if (!files.images.object.isEmpty()) {
        checkImages(folder, files.images, files.sections, findings);
    }
    for (const JsonFile& words : files.words) {
        if (!words.object.isEmpty()) {
            checkWords(words, findings);
        }
    }
    if (!files.palette.object.isEmpty()) {
        checkPalette(files.palette, findings);
    }
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& first, const Finding& second) {
        return std::tie(first.place.file, first.place.line) < std::tie(second.place.file, second.place.line);
    });
    return findings;
}

Findings findBrokenFiles(const QString& folder)
{
    Findings findings = TextFiles(folder).findings;
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.weight == Finding::Flaw; }),
        findings.end());
    return findings;
}

QString describe(const Finding& finding, const QString& folder)
{
    const QString file = QDir(folder).filePath(finding.place.file);
    return finding.place.line == 0
        ? QStringLiteral("%1: %2").arg(file, finding.text)
        : QStringLiteral("%1:%2: %3").arg(file).arg(finding.place.line).arg(finding.text);
}
