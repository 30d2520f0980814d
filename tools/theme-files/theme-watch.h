#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

/**
 * Watches the folder of a theme while somebody works on it.
 *
 * A change is told once the files have come to rest, 40 milliseconds after the last write. Files that
 * cannot be used, as they are in the middle of being written or have a mistake in them, are told apart, so
 * that a program can keep the last good look.
 */
class ThemeWatch : public QObject
{
    Q_OBJECT

public:
    /** Watches @p folder. The files in it as they are now count as seen. */
    explicit ThemeWatch(const QString& folder, QObject* parent = nullptr);

Q_SIGNALS:
    /** The theme has changed, and can be loaded. */
    void changed();

    /** The theme has changed, and cannot be used: @p message tells the place and the reason. */
    void broken(const QString& message);

private Q_SLOTS:
    void look();

private:
    /**
     * Watches what is there by now: an editor may put a new file in the place of the old one. Returns names,
     * sizes and times of all files that belong to the theme.
     */
    QStringList watch();

    QString m_folder;
    QFileSystemWatcher m_watcher;
    QTimer m_rest;
    QStringList m_seen;
};
