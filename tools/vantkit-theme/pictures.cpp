#include "pictures.h"

#include "sheet.h"
#include "specimens.h"
#include "views.h"

#include <vantkit-qt/vantkit.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

using Pictures = std::vector<std::pair<QString, QPixmap>>;

struct Page
{
    QString name;
    std::function<QPixmap()> draw;
};

QDir themeFolder()
{
    return QDir(UIPathManager::getInstance().getPath(QStringLiteral("resource_path")));
}

QPixmap catalogue()
{
    const QDir theme = themeFolder();
    QFile file(theme.filePath(QStringLiteral("images.json")));
    const QByteArray list = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QStringList states { QString(), QStringLiteral("_hover"), QStringLiteral("_click"),
        QStringLiteral("_disable") };
    Pictures pictures;
    for (const QJsonValue& name : QJsonDocument::fromJson(list)[QStringLiteral("images")].toArray()) {
        for (int state = 0; state < states.size(); ++state) {
            const QString image = name.toString() + states[state];
            if (theme.exists(QStringLiteral("images/%1.png").arg(image))) {
                pictures.emplace_back(
                    image, getGlobalImage(name.toString(), static_cast<ImageManager::ImageType>(state)));
            }
        }
    }
    return contactSheet(pictures, 6);
}

QPixmap fileTypes()
{
    Pictures pictures;
    const QDir folder(themeFolder().filePath(QStringLiteral("filetypes")));
    const double scale = DPIinfo::getInstance().getDPI() * DPIinfo::getInstance().getDPR();
    for (const QString& name : folder.entryList({ QStringLiteral("*.png") }, QDir::Files, QDir::Name)) {
        const QPixmap source(folder.filePath(name));
        QPixmap icon = source.scaled(qRound(source.width() / 4 * scale), qRound(source.height() / 4 * scale),
            Qt::KeepAspectRatio, Qt::SmoothTransformation);
        icon.setDevicePixelRatio(DPIinfo::getInstance().getDPR());
        pictures.emplace_back(name.chopped(4), icon);
    }
    return contactSheet(pictures, 8);
}

Page pageOf(const QString& name, Specimens (*specimens)())
{
    return { name, [specimens] { return pictureOf(specimens()); } };
}

const std::vector<Page>& pages()
{
    static const std::vector<Page> all {
        pageOf(QStringLiteral("buttons"), buttonSpecimens),
        pageOf(QStringLiteral("inputs"), inputSpecimens),
        pageOf(QStringLiteral("fields"), fieldSpecimens),
        { QStringLiteral("combo-box"), comboPopup },
        { QStringLiteral("calendar"), calendarPopup },
        { QStringLiteral("menu"), menuPopup },
        pageOf(QStringLiteral("labels"), labelSpecimens),
        { QStringLiteral("message-sheet"), messageSheet },
        { QStringLiteral("processing-sheet"), processingSheet },
        { QStringLiteral("input-sheet"), inputSheet },
        { QStringLiteral("message-box"), messageBox },
        { QStringLiteral("table-view"), tableView },
        { QStringLiteral("tree-view"), treeView },
        { QStringLiteral("scroll-bars"), scrollBars },
        { QStringLiteral("paging-bar"), pagingBar },
        pageOf(QStringLiteral("paging"), pagingSpecimens),
        { QStringLiteral("path-bar"), pathBar },
        pageOf(QStringLiteral("path"), pathSpecimens),
        { QStringLiteral("images"), catalogue },
        { QStringLiteral("filetypes"), fileTypes },
    };
    return all;
}

} // namespace

QStringList pageNames()
{
    QStringList names;
    for (const Page& page : pages()) {
        names << page.name;
    }
    return names;
}

QPixmap pictureOfPage(const QString& name)
{
    const auto page = std::find_if(
        pages().begin(), pages().end(), [&name](const Page& candidate) { return candidate.name == name; });
    return page == pages().end() ? QPixmap() : page->draw();
}
