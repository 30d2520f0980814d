#include "made-up-theme.h"

#include "bench.h"

#include <vantkit-qt/utils/ui-path-manager.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <random>

namespace bench {

namespace {

const std::array<const char*, 4> stateSuffixes { "", "_hover", "_click", "_disable" };

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw Failure(QStringLiteral("cannot write ") + path);
    }
}

// Soft edges, transparency and a gradient, as icons have them; sources of icons of 16, 24, 32 and 48 pixels.
QImage icon(int number)
{
    const std::array<int, 4> edges { 64, 96, 128, 192 };
    const int edge = edges[static_cast<std::size_t>(number) % edges.size()];
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, edge, edge);
    ground.setColorAt(0, QColor::fromHsv(number * 7 % 360, 160, 230));
    ground.setColorAt(1, QColor::fromHsv(number * 7 % 360, 220, 140));
    painter.setBrush(ground);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(image.rect().adjusted(4, 4, -4, -4));
    painter.setPen(QPen(Qt::white, edge / 12.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(edge * 0.3, edge * 0.5), QPointF(edge * 0.45, edge * 0.65));
    painter.drawLine(QPointF(edge * 0.45, edge * 0.65), QPointF(edge * 0.7, edge * 0.35));
    return image;
}

void writeList(const QString& folder)
{
    const QJsonObject list {
        { QStringLiteral("images"), QJsonArray::fromStringList(MadeUpTheme::imageNames()) },
    };
    write(folder + QStringLiteral("/images.json"), QJsonDocument(list).toJson());
}

} // namespace

MadeUpTheme::MadeUpTheme()
{
    if (!QDir(path()).mkpath(QStringLiteral("images"))) {
        throw Failure(QStringLiteral("no folder for a theme: ") + m_folder.errorString());
    }
    writeList(path());
    int number = 0;
    const QStringList files = imageFiles(path());
    for (const QString& file : files) {
        if (!icon(number++).save(file)) {
            throw Failure(QStringLiteral("cannot write ") + file);
        }
    }
}

QStringList MadeUpTheme::imageNames()
{
    const std::array<const char*, 5> families { "icon", "bt", "bg", "file_type", "toolbar_button" };
    QStringList names;
    for (int number = 0; number < 200; ++number) {
        const char* family = families[static_cast<std::size_t>(number) % families.size()];
        names.append(QStringLiteral("%1_%2").arg(QLatin1String(family)).arg(number));
    }
    std::shuffle(names.begin(), names.end(), std::minstd_rand(1)); // NOLINT: the same order at every run
    return names;
}

QStringList MadeUpTheme::imageFiles(const QString& folder)
{
    QStringList files;
    const QStringList names = imageNames();
    for (const QString& name : names) {
        for (const char* suffix : stateSuffixes) {
            files.append(QStringLiteral("%1/images/%2%3.png").arg(folder, name, QLatin1String(suffix)));
        }
    }
    return files;
}

QString MadeUpTheme::writeTemplates(const QString& folder, int sections)
{
    QString text;
    for (int section = 0; section < sections; ++section) {
        text += QStringLiteral("==component.section_%1==\n/* What the section\n   is for. */\n").arg(section);
        text += styleSheet(400);
        text += QStringLiteral("QLabel { image: url(IMG_LOC/icon_%1.png); }\n"
                               "QFrame { image: url(TMPIMG_LOC/tmp_bg_%1.png); // the ground\n }\n")
                    .arg(section);
    }
    QString file = QStringLiteral("%1/%2.style").arg(folder).arg(sections);
    write(file, text.toUtf8());
    return file;
}

QString MadeUpTheme::writeSection(const QString& folder, const QString& key, const QString& text)
{
    QString file = QStringLiteral("%1/%2.style").arg(folder, key);
    write(file, QStringLiteral("==%1==\n%2").arg(key, text).toUtf8());
    return file;
}

QString MadeUpTheme::styleSheet(int length)
{
    const QStringList rules {
        QStringLiteral(
            "QPushButton {\n    min-width: 72px;\n    min-height: 28px;\n    padding: 0px 12.5px;\n"
            "    border: 1px solid #c7ced6;\n    border-radius: 4px;\n    color: #1f2933;\n"
            "    background-color: #ffffff;\n    font-size: 13px;\n}\n"),
        QStringLiteral("QPushButton:hover {\n    border-color: #0b6bcb;\n    color: #0b6bcb;\n}\n"),
        QStringLiteral("QPushButton:pressed {\n    background-color: #e3effb;\n    padding-top: 1px;\n}\n"),
        QStringLiteral("QPushButton:focus {\n    border: 2px solid #0b6bcb;\n    padding: 0px 11px;\n}\n"),
        QStringLiteral("QPushButton:disabled {\n    border-color: #e4e7eb;\n    color: #9aa5b1;\n}\n"),
    };
    QString text;
    for (int rule = 0; text.size() < length; ++rule) {
        text += rules.at(rule % rules.size());
    }
    return text;
}

void MadeUpTheme::makeCurrent(const QString& folder)
{
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), folder);
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), folder + QStringLiteral("/user"));
}

const MadeUpTheme& MadeUpTheme::current()
{
    static const MadeUpTheme theme;
    static const bool isCurrent = [] {
        makeCurrent(theme.path());
        return true;
    }();
    Q_UNUSED(isCurrent)
    return theme;
}

} // namespace bench
