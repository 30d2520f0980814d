#include "theme-watch.h"

#include "theme-check.h"

#include <QDateTime>
#include <QDirIterator>

namespace {

// Longer than an editor takes from emptying a file to filling it, or from taking the old one away to putting
// the new one there.
constexpr int restInMs = 40;

} // namespace

ThemeWatch::ThemeWatch(const QString& folder, QObject* parent)
    : QObject(parent)
    , m_folder(QDir::cleanPath(folder))
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(restInMs);
    connect(&m_rest, SIGNAL(timeout()), this, SLOT(look()));
    connect(&m_watcher, SIGNAL(fileChanged(QString)), &m_rest, SLOT(start()));
    connect(&m_watcher, SIGNAL(directoryChanged(QString)), &m_rest, SLOT(start()));
    m_seen = watch();
}

void ThemeWatch::look()
{
    const QStringList now = watch();
    if (now == m_seen) {
        return;
    }
    m_seen = now;
    const Findings findings = findBrokenFiles(m_folder);
    if (findings.empty()) {
        Q_EMIT changed();
    } else {
        Q_EMIT broken(describe(findings.front(), m_folder));
    }
}

QStringList ThemeWatch::watch()
{
    const QStringList kinds { QStringLiteral("*.json"), QStringLiteral("*.style"), QStringLiteral("*.png"),
        QStringLiteral("*.gif") };
    m_watcher.addPath(m_folder);
    QStringList state;
    QDirIterator entries(
        m_folder, kinds, QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        m_watcher.addPath(path); // before it is looked at: what comes afterwards is told
        const QFileInfo file = entries.fileInfo();
        if (file.isFile()) {
            state << QStringLiteral("%1 %2 %3")
                         .arg(path, QString::number(file.size()),
                             QString::number(file.lastModified().toMSecsSinceEpoch()));
        }
    }
    state.sort();
    return state;
}
