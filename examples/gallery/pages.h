#pragma once

#include <QStringList>

class QWidget;

namespace gallery {

class Page;

/**
 * A row of the table of pages. The texts of a page are those of the keys `<name>.title` and `<name>.caption`.
 */
struct PageInfo
{
    QString name; ///< on the command line and in the names of pictures
    Page* (*create)(QWidget* parent); ///< the parent owns the page
    QStringList states; ///< what a picture is taken of, beside the page as it opens
};

/** The pages in the order of the navigation. A new page is one file and one row here. */
const QList<PageInfo>& pages();
QStringList pageNames();

} // namespace gallery
