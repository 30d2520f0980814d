#include "file-renaming.h"

#include "texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace gallery {

namespace {

namespace fs = std::filesystem;

bool isName(const QString& name)
{
    return !name.trimmed().isEmpty() && name != QLatin1String(".") && name != QLatin1String("..")
        && !name.contains(QLatin1Char('/')) && !name.contains(QChar(0));
}

// A link that leads nowhere is there as well.
fs::file_type typeOf(const QString& path, std::error_code& error)
{
    return fs::symlink_status(fs::u8path(path.toStdString()), error).type();
}

bool isThere(fs::file_type type)
{
    return type != fs::file_type::not_found && type != fs::file_type::none;
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
    std::error_code error;
    if (!isThere(typeOf(path, error))) {
        return text("files.problem.gone").arg(info.fileName());
    }
    const fs::file_type newType = typeOf(newPath, error);
    if (newType == fs::file_type::none) {
        return text("files.problem.refused").arg(info.fileName(), QString::fromStdString(error.message()));
    }
    const bool differsInCaseOnly = newName.compare(info.fileName(), Qt::CaseInsensitive) == 0;
    if (isThere(newType) && !(differsInCaseOnly && QFileInfo(newPath) == info)) {
        return text("files.problem.taken").arg(newName);
    }
    FileToRename file(path);
    if (file.rename(newPath)) {
        return {};
    }
    return text("files.problem.refused").arg(info.fileName(), refusalOf(newPath, file.errorString()));
}

} // namespace gallery
