#include "theme-watch.h"

#include "theme-check.h"

#include <QDateTime>
#include <QDirIterator>

namespace {

constexpr int restInMs = 100;

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
    watch();
    m_seen = state();
}

void ThemeWatch::look()
{
    watch();
    const QStringList now = state();
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

void ThemeWatch::watch()
{
    QStringList paths { m_folder };
    QDirIterator entries(
        m_folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        paths << entries.next();
    }
    m_watcher.addPaths(paths);
}

QStringList ThemeWatch::state() const
{
    const QStringList kinds { QStringLiteral("*.json"), QStringLiteral("*.style"), QStringLiteral("*.png"),
        QStringLiteral("*.gif") };
    QStringList files;
    QDirIterator entries(m_folder, kinds, QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        entries.next();
        const QFileInfo file = entries.fileInfo();
        files << QStringLiteral("%1 %2 %3")
                     .arg(file.filePath())
                     .arg(file.size())
                     .arg(file.lastModified().toMSecsSinceEpoch());
    }
    files.sort();
    return files;
}
