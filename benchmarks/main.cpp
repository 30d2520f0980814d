#include "bench.h"
#include "child-process.h"
#include "families.h"
#include "report.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QTextStream>

#include <algorithm>

using namespace bench;

namespace {

constexpr int exitAboveCeiling = 1;
constexpr int exitFailure = 2;

const QString listOption = QStringLiteral("list");
const QString jsonOption = QStringLiteral("json");
const QString markdownOption = QStringLiteral("markdown");
const QString childOption = QStringLiteral("child");

// Needs no display, and has the same scale on every machine.
void prepareDisplay()
{
#ifdef Q_OS_UNIX
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
#endif
    if (qEnvironmentVariableIsEmpty("QT_FONT_DPI")) {
        qputenv("QT_FONT_DPI", "96");
    }
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Measures the kit beside what one would write without it.\n"
                       "The exit code is 1 if a row is above its ceiling."));
    parser.addHelpOption();
    parser.addOption({ listOption, QStringLiteral("Print what each row compares, and measure nothing.") });
    parser.addOption(
        { jsonOption, QStringLiteral("Write the results to <file> as JSON."), QStringLiteral("file") });
    parser.addOption({ markdownOption, QStringLiteral("Write the results to <file> as a table in Markdown."),
        QStringLiteral("file") });
    QCommandLineOption child(
        childOption, QStringLiteral("Do the work of one side of a row on a path."), QStringLiteral("name"));
    child.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(child);
    parser.addPositionalArgument(QStringLiteral("rows"),
        QStringLiteral("The rows to measure, by name or by the beginning of their names; all by default."),
        QStringLiteral("[rows...]"));
}

void writeIfAsked(const QString& path, const QByteArray& bytes)
{
    if (path.isEmpty()) {
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw Failure(QStringLiteral("cannot write ") + path);
    }
}

std::vector<Row> chosen(const std::vector<Row>& rows, const QStringList& names)
{
    std::vector<Row> result;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(result), [&names](const Row& row) {
        return names.isEmpty() || std::any_of(names.begin(), names.end(), [&row](const QString& name) {
            return row.name.startsWith(name);
        });
    });
    return result;
}

void requireKnown(const std::vector<Row>& rows, const QStringList& names)
{
    for (const QString& name : names) {
        if (name.isEmpty() || chosen(rows, { name }).empty()) {
            throw Failure(QStringLiteral("no row \"%1\"; --list names all of them").arg(name));
        }
    }
}

std::vector<Result> measureAll(const std::vector<Row>& rows)
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    out << tableHead() << Qt::flush;
    std::vector<Result> results;
    for (const Row& row : rows) {
        results.push_back(measure(row));
        out << tableRow(results.back()) << Qt::flush;
    }
    return results;
}

int run(const QCommandLineParser& parser)
{
    const Suite suite = wholeSuite();
    const QStringList arguments = parser.positionalArguments();
    if (parser.isSet(childOption)) {
        serveAsChild(suite, parser.value(childOption), arguments.value(0));
        return 0;
    }

    requireKnown(suite.rows, arguments);
    const std::vector<Row> rows = chosen(suite.rows, arguments);
    if (parser.isSet(listOption)) {
        QTextStream(stdout) << list(rows);
        return 0;
    }

    const std::vector<Result> results = measureAll(rows);
    writeIfAsked(parser.value(jsonOption), json(results));
    writeIfAsked(parser.value(markdownOption), markdown(results).toUtf8());
    const bool above = std::any_of(
        results.begin(), results.end(), [](const Result& result) { return result.isAboveCeiling(); });
    return above ? exitAboveCeiling : 0;
}

} // namespace

int main(int argc, char** argv)
{
    prepareDisplay();
    QApplication application(argc, argv);
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);
    try {
        return run(parser);
    } catch (const Failure& failure) {
        QTextStream(stderr) << "vantkit-bench: " << QString::fromStdString(failure.what()) << '\n';
        return exitFailure;
    }
}
