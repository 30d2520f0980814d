#include "template-text.h"

#include <vantkit-qt/theme/vant-theme.h>

#include <QDir>
#include <QFile>

#include <map>

namespace {

const QLatin1String headerMark("==");
const QLatin1String commentBegin("/*");
const QLatin1String commentEnd("*/");
const QLatin1String lineComment("//");
const QLatin1Char lineEnd('\n');

bool isHeader(const QString& line)
{
    return line.startsWith(headerMark) && line.endsWith(headerMark);
}

QString keyOf(QString header)
{
    return header.remove(QLatin1Char('=')).remove(QLatin1Char(' '));
}

/** Text whose every character knows the line that it comes from. */
struct Text
{
    QString characters;
    std::vector<std::size_t> lines;

    int size() const { return characters.size(); }

    std::size_t lineAt(int index) const { return lines[static_cast<std::size_t>(index)]; }

    QString before(int index) const
    {
        const int begin = index == 0 ? 0 : characters.lastIndexOf(lineEnd, index - 1) + 1;
        return characters.mid(begin, index - begin);
    }

    void add(const QString& text, std::size_t line)
    {
        characters += text;
        lines.insert(lines.end(), static_cast<std::size_t>(text.size()), line);
    }

    void add(const Text& other, int begin, int end)
    {
        characters += other.characters.midRef(begin, end - begin);
        lines.insert(lines.end(), other.lines.begin() + begin, other.lines.begin() + end);
    }
};

class Reader
{
public:
    Templates read(const QString& folder)
    {
        for (const QString& path : VantTheme(folder).templates()) {
            add(path, QDir(folder).relativeFilePath(path));
        }
        removeBlockComments();
        noteHeaders();
        removeLineComments();
        cut();
        tellLostHeaders();
        return result;
    }

private:
    void add(const QString& path, const QString& name);
    void removeBlockComments();
    void lookAtComment(int begin, int end);
    void noteHeaders();
    void removeLineComments();
    void cut();
    void open(const QString& key, std::size_t line);
    void addLine(const QString& line, const Place& place);
    void tellLostHeaders();
    void tell(std::size_t line, const QString& what, Finding::Weight weight = Finding::Flaw);

    Text text;
    std::vector<Place> places; // by the line
    std::map<std::size_t, QString> headers; // what was meant to be one, by the line
    QString stray; // the file that was told to begin without a header
    Templates result;
};

void Reader::tell(std::size_t line, const QString& what, Finding::Weight weight)
{
    result.findings.push_back({ places[line], what, weight });
}

void Reader::add(const QString& path, const QString& name)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        result.findings.push_back({ { name, 0 }, file.errorString(), Finding::Unreadable });
        return;
    }
    int number = 0;
    for (const QString& line : QString::fromUtf8(file.readAll().constData()).split(lineEnd)) {
        places.push_back({ name, ++number });
        text.add(line + lineEnd, places.size() - 1);
    }
}

void Reader::removeBlockComments()
{
    Text rest;
    int copied = 0;
    for (int begin = text.characters.indexOf(commentBegin); begin != -1;
         begin = text.characters.indexOf(commentBegin, copied)) {
        const int end = text.characters.indexOf(commentEnd, begin + commentBegin.size());
        if (end == -1) {
            tell(text.lineAt(begin), QStringLiteral("the comment is never closed"), Finding::Broken);
            break;
        }
        lookAtComment(begin, end);
        rest.add(text, copied, begin);
        copied = end + commentEnd.size();
    }
    rest.add(text, copied, text.size());
    text = rest;
}

// A comment over several lines that was meant to end earlier takes in the beginning of another one, or a
// header.
void Reader::lookAtComment(int begin, int end)
{
    const QStringList lines = text.characters.mid(begin, end - begin).split(lineEnd);
    if (lines.size() == 1) {
        return;
    }
    const std::size_t line = text.lineAt(begin);
    const QString endFile = places[text.lineAt(end)].file;
    if (endFile != places[line].file) {
        tell(line, QStringLiteral("the comment goes on in %1").arg(endFile), Finding::Broken);
        return;
    }
    if (text.before(begin).contains(lineComment)) {
        tell(line,
            QStringLiteral("\"/*\" in a line comment begins another one, which takes in what follows, up to "
                           "the next \"*/\""));
        return;
    }
    for (int i = 1; i < lines.size(); ++i) {
        if (isHeader(lines[i]) && !keyOf(lines[i]).isEmpty()) {
            tell(line, QStringLiteral("the comment takes in the header \"%1\"").arg(keyOf(lines[i])));
            return;
        }
        if (lines[i].contains(commentBegin)) {
            tell(line, QStringLiteral("the comment takes in the text up to the end of the next one"));
            return;
        }
    }
}

void Reader::noteHeaders()
{
    int begin = 0;
    for (const QString& line : text.characters.split(lineEnd)) {
        const QString meant = line.section(lineComment, 0, 0).trimmed();
        if (isHeader(meant) && !keyOf(meant).isEmpty()) {
            headers[text.lineAt(begin)] = line;
        }
        begin += line.size() + 1;
    }
}

void Reader::removeLineComments()
{
    Text rest;
    int copied = 0;
    for (int begin = text.characters.indexOf(lineComment); begin != -1;
         begin = text.characters.indexOf(lineComment, copied)) {
        const QString before = text.before(begin);
        if (before.endsWith(QLatin1Char(':'))
            || before.count(QLatin1Char('(')) > before.count(QLatin1Char(')'))) {
            tell(text.lineAt(begin),
                QStringLiteral("\"//\" begins a comment in an address, too: the rest of the line is gone"));
        }
        rest.add(text, copied, begin);
        copied = text.characters.indexOf(lineEnd, begin) + 1;
    }
    rest.add(text, copied, text.size());
    text = rest;
}

void Reader::cut()
{
    int begin = 0;
    for (const QString& line : text.characters.split(lineEnd)) {
        if (isHeader(line)) {
            open(keyOf(line), text.lineAt(begin));
        } else if (!line.isEmpty()) {
            addLine(line, places[text.lineAt(begin)]);
        }
        begin += line.size() + 1;
    }
}

void Reader::open(const QString& key, std::size_t line)
{
    headers.erase(line);
    if (key.isEmpty()) {
        tell(line, QStringLiteral("the header has no key: the lines under it go to the next section"));
    }
    for (const Section& section : result.sections) {
        if (section.key == key && !key.isEmpty()) {
            tell(line,
                QStringLiteral("the key \"%1\" stands twice: this section takes the place of %2:%3")
                    .arg(key, section.header.file)
                    .arg(section.header.line));
        }
    }
    result.sections.push_back({ key, places[line], {} });
}

void Reader::addLine(const QString& line, const Place& place)
{
    const bool isFirst = result.sections.empty();
    if (!line.trimmed().isEmpty() && place.file != stray
        && (isFirst || result.sections.back().header.file != place.file)) {
        stray = place.file;
        result.findings.push_back({ place,
            isFirst ? QStringLiteral("the text before the first header has no key: it goes to the section "
                                     "that follows, or is lost")
                    : QStringLiteral("the text before the file's first header continues \"%1\" of %2")
                          .arg(result.sections.back().key, result.sections.back().header.file) });
    }
    if (!isFirst) {
        result.sections.back().lines.push_back({ line, place });
    }
}

void Reader::tellLostHeaders()
{
    for (const auto& [line, header] : headers) {
        const bool hasBlanks = !isHeader(header) && !header.contains(lineComment);
        tell(line,
            (hasBlanks ? QStringLiteral("\"%1\" is no header, as there is a blank before or behind it")
                       : QStringLiteral("\"%1\" is no header, as a comment joins it with another line"))
                .arg(header.trimmed()));
    }
}

} // namespace

QString Section::text() const
{
    QString joined;
    for (const TemplateLine& line : lines) {
        joined += lineEnd + line.text;
    }
    return joined;
}

Templates readTemplates(const QString& folder)
{
    return Reader().read(folder);
}
