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

// Left to itself, QFile would copy what cannot be renamed over whatever has got the name meanwhile.
class FileToRename : public QFile
{
public:
    using QFile::QFile;

    bool isSequential() const override { return true; }
};

// Why no file may have the name @p path, in the words of the system.
QString refusalOf(const QString& path, const QString& otherwise)
{
    QFile probe(path);
    if (probe.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        probe.remove();
        return otherwise;
    }
    return probe.errorString();
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
    FileToRename file(path);
    if (file.rename(newPath)) {
        return {};
    }
    return text("files.problem.refused").arg(info.fileName(), refusalOf(newPath, file.errorString()));
}

} // namespace gallery
