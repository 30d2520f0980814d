#include "utils/file-type-map.h"

#include <QStringList>

std::map<QString, QString, CaseLessCompare> FileTypeMap::m_file_type_map;

bool CaseLessCompare::operator()(const QString& a, const QString& b) const
{
    return a.compare(b, Qt::CaseInsensitive) < 0;
}

FileTypeMap& FileTypeMap::getInstance()
{
    static FileTypeMap instance;
    return instance;
}

// "ac3" stands in two rows, and the later one counts.
FileTypeMap::FileTypeMap()
{
    mappingFile(QStringLiteral("acc"),
        QStringLiteral(
            "acc ade adp adn accdr accdb accdt mdb mda mdn mdt mdw mdf mde accde mam maq mar mat maf"));
    mappingFile(QStringLiteral("ai"), QStringLiteral("ai"));
    mappingFile(QStringLiteral("audio"),
        QStringLiteral("mp3 aac flac m4a m4b aif ogg pcm wav cda mid mp2 mka mpc ape ra ac3 dts wma"));
    mappingFile(QStringLiteral("bkpi"), QStringLiteral("bkpi"));
    mappingFile(QStringLiteral("doc"), QStringLiteral("doc docx wri rtf"));
    mappingFile(QStringLiteral("exe"), QStringLiteral("exe"));
    mappingFile(QStringLiteral("fla"), QStringLiteral("fla"));
    mappingFile(QStringLiteral("htm"), QStringLiteral("htm html"));
    mappingFile(QStringLiteral("idn"), QStringLiteral("idn"));
    mappingFile(QStringLiteral("image"),
        QStringLiteral(
            "bmp ico tif tiff ufo raw arw srf sr2 dcr k25 kdc cr2 crw nef mrw ptx pef raf 3fr erf mef mos "
            "orf rw2 dng x3f jpg jpe jpeg png gif"));
    mappingFile(QStringLiteral("iso"), QStringLiteral("iso bin img mds nrg daa"));
    mappingFile(QStringLiteral("code"),
        QStringLiteral(
            "js css actproj ad akp applescript as asax asc ascx asm asmx asp aspx asr c cc php jsx xml xhtml "
            "mhtml cpp cs cxx"));
    mappingFile(QStringLiteral("pdf"), QStringLiteral("pdf"));
    mappingFile(QStringLiteral("ppt"), QStringLiteral("ppt pptx pps ppsx"));
    mappingFile(QStringLiteral("psd"), QStringLiteral("psd"));
    mappingFile(QStringLiteral("swf"), QStringLiteral("swf flv f4v"));
    mappingFile(QStringLiteral("ttf"), QStringLiteral("ttf ttc otf"));
    mappingFile(QStringLiteral("txt"), QStringLiteral("txt"));
    mappingFile(QStringLiteral("video"),
        QStringLiteral(
            "avi 3gp 3g2 asf dat divx dvr-ms m2t m2ts m4v mkv mp4 mts mov qt tp trp ts vob wmv xvid ac3 amr "
            "rm rmvb ifo mpeg mpg mpe m1v m2v mpeg1 mpeg2 mpeg4 ogv webm"));
    mappingFile(QStringLiteral("xls"),
        QStringLiteral("xls xla xlb xlc xld xlk xll xlm xlt xlv xlw xlsx xlsm xlsb xltm xlam"));
    mappingFile(QStringLiteral("zip"), QStringLiteral("zip tar 7z bz2 gz zip tgz tbz rar"));
}

void FileTypeMap::mappingFile(const QString& type, const QString& extensions)
{
    const QStringList parts = extensions.split(QLatin1Char(' '), Qt::KeepEmptyParts, Qt::CaseSensitive);
    for (const QString& extension : parts) {
        m_file_type_map[extension] = type;
    }
}

QString FileTypeMap::getFiletypeMapping(const QString& name, bool removed)
{
    const auto found = m_file_type_map.find(name);
    const QString type = found == m_file_type_map.end() ? QStringLiteral("xxx") : found->second;
    return type + (removed ? QStringLiteral("_removed.png") : QStringLiteral(".png"));
}
