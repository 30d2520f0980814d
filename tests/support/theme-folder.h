#pragma once

#include <vantkit-qt/image-manager/image-manager.h>

#include <QColor>
#include <QImage>
#include <QStringList>
#include <QTemporaryDir>

/** A theme in a temporary folder, made up by the test, with a user folder beside it. */
class ThemeFolder
{
public:
    ThemeFolder();

    QString userFolder() const;

    /** The path of @p name in the resource folder. */
    QString path(const QString& name) const;

    /** What was written for style sheets of the image @p name; null if there is nothing. */
    QImage temporaryImage(const QString& name) const;

    QString write(const QString& name, const QByteArray& bytes) const;
    void writeImage(const QString& name, const QSize& size, const QColor& color = Qt::gray) const;
    void writeList(const QStringList& images, const QStringList& temporaryImages = {}) const;

    /** Makes this the theme of the process and reads its list. */
    void initializeImages(ImageManager::InitializeType type) const;

    /** Makes @p resources and @p user the process's folders, without the warning for replacing a path. */
    static void setPaths(const QString& resources, const QString& user);

private:
    QTemporaryDir folder;
};
