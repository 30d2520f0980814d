#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QIODevice;
class QPixmap;
class QUrl;

namespace vantkit::internal {

/** Where the images of pages from the web are saved. */
QString imageFolder();

/** What is behind the last slash of @p path. */
QString fileNameOf(const QString& path);

/**
 * Where the image @p source of a page is saved; a path that cannot be written to if its name leads elsewhere.
 */
QString savePathOf(const QString& source);

/**
 * The file in one of @p folders that a page calls @p image; empty if there is none. The image folder counts
 * for a page that has had its images fetched, @p isFetched.
 */
QString imageFileIn(const QStringList& folders, const QString& image, bool isFetched);

/** The file of the page that @p link leads to, below one of @p folders; empty if there is none. */
QString pageFileIn(const QStringList& folders, const QUrl& link);

/** The text of a page on disk; nothing if it cannot be read. */
std::optional<QString> readPage(const QString& path);

/** The image that @p content holds; null if there is none, or one too large to be of a page. */
QPixmap readImage(QIODevice* content);

} // namespace vantkit::internal
