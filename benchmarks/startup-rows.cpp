#include "bench.h"
#include "child-process.h"
#include "families.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace bench {

namespace {

FirstLine startGallery(const QTemporaryDir& dataFolder)
{
    return firstLineOf(
        QStringLiteral(VANTKIT_BENCH_GALLERY), { QStringLiteral("--startup-times") }, dataFolder.path());
}

Sampler wholeStart()
{
    const auto dataFolder = std::make_shared<QTemporaryDir>();
    return interleaved([dataFolder] { return startGallery(*dataFolder).nanoseconds; },
        [dataFolder] {
            return firstLineOf(QStringLiteral(VANTKIT_BENCH_EMPTY_WINDOW), {}, dataFolder->path())
                .nanoseconds;
        });
}

Sampler shareOfStart(const QString& phase)
{
    const auto dataFolder = std::make_shared<QTemporaryDir>();
    return [dataFolder, phase] {
        const FirstLine start = startGallery(*dataFolder);
        const QJsonValue milliseconds = QJsonDocument::fromJson(start.text).object().value(phase);
        if (!milliseconds.isDouble()) {
            throw Failure(QStringLiteral("the gallery does not tell the time of its phase ") + phase);
        }
        return Amounts { milliseconds.toDouble() * 1e6, start.nanoseconds };
    };
}

} // namespace

void addStartupRows(Suite& suite)
{
    const auto addRow = [&suite](const char* name, const char* kit, const char* alternative,
                            std::optional<double> ceiling, const std::function<Sampler()>& prepare) {
        suite.rows.push_back({ QLatin1String(name), QStringLiteral("one start"), QLatin1String(kit),
            QLatin1String(alternative), ceiling, 21, prepare });
    };
    const auto addPhase = [&addRow](const char* name, const char* kit, const QString& phase) {
        addRow(name, kit, "the whole start of the gallery", std::nullopt,
            [phase] { return shareOfStart(phase); });
    };
    addRow("startup.gallery", "the gallery, to its first paint", "an empty QMainWindow, to its first paint",
        4.5, wholeStart);
    addPhase("startup.images", "its images", QStringLiteral("images"));
    addPhase("startup.templates", "its templates", QStringLiteral("templates"));
    addPhase("startup.widgets", "its widgets", QStringLiteral("widgets"));
    addPhase("startup.first-paint", "its first paint", QStringLiteral("first_paint"));
}

} // namespace bench
