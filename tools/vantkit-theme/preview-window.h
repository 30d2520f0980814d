#pragma once

#include "theme-files/theme-watch.h"

#include <QLabel>
#include <QListWidget>
#include <QMap>
#include <QProcess>
#include <QScrollArea>
#include <QTemporaryDir>

#include <memory>

/**
 * Shows the pages of a theme and follows its files. Another process draws the pictures, as it does for files:
 * a page is the same in both, nothing of an older look is left in it, and what goes wrong with a theme is not
 * the window's end.
 */
class PreviewWindow : public QWidget
{
    Q_OBJECT

public:
    /** @p program is what draws: this one, by its path. */
    PreviewWindow(const QString& folder, const QString& language, const QString& program);

    ~PreviewWindow() override;

private Q_SLOTS:
    void draw();
    void takePictures();
    void showPage();
    void tell(const QString& message);

private:
    void start(const QStringList& pages);
    void stop();
    QString currentPage() const;

    QString m_folder;
    QString m_language;
    QString m_program;
    QTemporaryDir m_output;
    QMap<QString, QPixmap> m_pictures;
    ThemeWatch m_watch;
    std::unique_ptr<QProcess> m_process;
    QStringList m_waiting; // pages that are drawn when the one that is looked at is done

    QListWidget* m_list;
    QLabel* m_message;
    QScrollArea* m_area;
    QLabel* m_picture;
};
