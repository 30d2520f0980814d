#include "file-renaming.h"

#include "texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace gallery {

namespace {

bool isName(const QString& name)
{
    return !name.trimmed().isEmpty() && name != QLatin1String(".") && name != QLatin1String("..")
        && !name.contains(QLatin1Char('/')) && !name.contains(QChar(0));
}

// A link that leads nowhere is there as well.
bool isThere(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

QString renameFile(const QString& path, const QString& newName)
{
    if (!isName(newName)) {
        return text("files.problem.name").arg(newName);
    }
    const QFileInfo info(path);
    const QString newPath = info.dir().filePath(newName);
    if (!isThere(path)) {
        return text("files.problem.gone").arg(info.fileName());
    }
    const bool differsInCaseOnly = newName.compare(info.fileName(), Qt::CaseInsensitive) == 0;
    if (isThere(newPath) && !(differsInCaseOnly && QFileInfo(newPath) == info)) {
        return text("files.problem.taken").arg(newName);
    }
    // The system refuses as well if the name was taken in between.
    QFile file(path);
    return file.rename(newPath) ? QString() : file.errorString();
}

} // namespace gallery
