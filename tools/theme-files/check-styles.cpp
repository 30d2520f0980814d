#include "check-styles.h"

#include "kit-requests.h"

#include <QRegularExpression>
#include <QWidget>

#include <algorithm>
#include <map>

namespace {

const QLatin1String comboBox("component.combobox");
constexpr double enoughContrast = 4.5;

QStringList* sinkForQt = nullptr;

// Whether an image is there is asked elsewhere, by its name in the theme.
void takeFromQt(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    static const QRegularExpression object(QStringLiteral(" of object .*"));
    if (!text.startsWith(QLatin1String("Could not create pixmap"))) {
        *sinkForQt << QStringLiteral("Qt: ") + QString(text).remove(object);
    }
}

/** What Qt says about a style sheet when a widget gets it. */
QStringList wordsOfQt(const QString& sheet)
{
    QStringList words;
    sinkForQt = &words;
    const QtMessageHandler previous = qInstallMessageHandler(takeFromQt);
    QWidget widget;
    widget.setStyleSheet(sheet);
    widget.ensurePolished();
    qInstallMessageHandler(previous);
    words.removeDuplicates();
    return words;
}

// As the combo box does it.
Section filledIn(Section section)
{
    for (TemplateLine& line : section.lines) {
        if (section.key == comboBox) {
            line.text.replace(QLatin1String("%1"), QLatin1String("padding-left: 6px;"));
            line.text.replace(QLatin1String("%2"), QLatin1String("border: 1px solid #C8D2DC;"));
        }
    }
    return section;
}

// Qt gives no line, so where it complains about the whole, it is asked about the rules one by one.
void checkSheet(const Section& section, Findings& findings)
{
    const QString unparsed = QStringLiteral("Qt: Could not parse stylesheet");
    if (!wordsOfQt(section.text()).contains(unparsed)) {
        return;
    }
    const std::vector<Rule> rules = rulesOf(section);
    const auto broken = std::find_if(rules.begin(), rules.end(),
        [&unparsed](const Rule& rule) { return wordsOfQt(rule.text).contains(unparsed); });
    findings.push_back({ broken == rules.end() ? section.header : broken->place, unparsed, Finding::Broken });
}

void checkMarkers(const Section& section, Findings& findings)
{
    static const QRegularExpression marker(QStringLiteral("%[0-9]"));
    const QString text = section.text();
    for (const QString& needed : { QStringLiteral("%1"), QStringLiteral("%2") }) {
        if (text.count(needed) != 1) {
            findings.push_back(
                { section.header, QStringLiteral("the place marker %1 has to stand here once").arg(needed) });
        }
    }
    if (QString(text).remove(QLatin1String("%1")).remove(QLatin1String("%2")).contains(marker)) {
        findings.push_back(
            { section.header, QStringLiteral("there are other place markers than %1 and %2") });
    }
}

// Of these Qt says nothing.
QString flawOf(const Declaration& declaration)
{
    static const QRegularExpression inParentheses(QStringLiteral("\\([^)]*\\)"));
    static const QRegularExpression fraction(QStringLiteral("\\d*\\.\\d+px"));
    const auto cut = fraction.match(declaration.value);
    return declaration.value.isEmpty()
        ? QStringLiteral("\"%1\" has no value, and Qt leaves it out").arg(declaration.property)
        : QString(declaration.value).remove(inParentheses).contains(QLatin1Char(':'))
        ? QStringLiteral("a semicolon is missing behind \"%1\"").arg(declaration.property)
        : cut.hasMatch() ? QStringLiteral("%1 is cut to a whole number").arg(cut.captured())
                         : QString();
}

void checkDeclaration(const Declaration& declaration, Findings& findings)
{
    const QString flaw = flawOf(declaration);
    if (!flaw.isEmpty()) {
        findings.push_back({ declaration.place, flaw });
        return;
    }
    const QString alone = QStringLiteral("* { %1: %2; }").arg(declaration.property, declaration.value);
    for (const QString& word : wordsOfQt(alone)) {
        findings.push_back({ declaration.place, word });
    }
}

/** The text of a declaration and what may lie below it. */
void checkText(
    const Rule& rule, const QString& property, const std::vector<QColor>& grounds, Findings& findings)
{
    const QColor text = rule.colour(property);
    for (const QColor& ground : grounds) {
        if (text.alpha() > 0 && text.isValid() && contrast(text, ground) < enoughContrast) {
            findings.push_back({ rule.find(property)->place,
                QStringLiteral("text in %1 on %2 has a contrast of %3, less than %4")
                    .arg(text.name().toUpper(), ground.name().toUpper())
                    .arg(contrast(text, ground), 0, 'f', 2)
                    .arg(enoughContrast) });
            return;
        }
    }
}

bool covers(const QColor& colour)
{
    return colour.isValid() && colour.alpha() > 0;
}

} // namespace

void checkSheets(const std::vector<Section>& sections, Findings& findings)
{
    for (const Section& section : sections) {
        checkSheet(filledIn(section), findings);
    }
}

void checkStyles(const std::vector<Section>& sections, Findings& findings)
{
    for (const QString& key : kitrequests::styleKeys()) {
        if (std::none_of(sections.begin(), sections.end(),
                [&key](const Section& section) { return section.key == key; })) {
            findings.push_back(
                { { QStringLiteral("templates"), 0 }, QStringLiteral("the key \"%1\" is missing").arg(key) });
        }
    }
    for (const Section& section : sections) {
        if (section.key == comboBox) {
            checkMarkers(section, findings);
        }
        for (const Rule& rule : rulesOf(filledIn(section))) {
            for (const Declaration& declaration : rule.declarations) {
                checkDeclaration(declaration, findings);
            }
        }
    }
}

// Text stands on the ground that its rule names, or that the first rule for the same selector names, or on a
// page's.
void checkContrast(const std::vector<Section>& sections, const std::vector<QColor>& pages, Findings& findings)
{
    static const QRegularExpression state(QStringLiteral("[:[]"));
    for (const Section& section : sections) {
        std::map<QString, QColor> grounds;
        for (const Rule& rule : rulesOf(filledIn(section))) {
            const QColor own = rule.colour(QStringLiteral("background-color"));
            const QColor first = grounds.emplace(rule.selector.section(state, 0, 0), own).first->second;
            const QColor ground = own.isValid() ? own : first;
            if (rule.selector.endsWith(QLatin1String(":disabled"))) {
                continue;
            }
            checkText(rule, QStringLiteral("color"), covers(ground) ? std::vector<QColor> { ground } : pages,
                findings);
            const QColor chosen = rule.colour(QStringLiteral("selection-background-color"));
            checkText(rule, QStringLiteral("selection-color"),
                covers(chosen) ? std::vector<QColor> { chosen } : std::vector<QColor> {}, findings);
        }
    }
}
