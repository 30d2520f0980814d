#include "sheet.h"

#include <vantkit-qt/utils/dpi-info.h>
#include <vantkit-qt/utils/ui-path-manager.h>
#include <vantkit-qt/widgets/vant-line-edit.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <map>
#include <set>

namespace {

int px(int designPixels)
{
    return static_cast<int>(designPixels * DPIinfo::getInstance().getDPI());
}

QString nameOf(Look look)
{
    switch (look) {
    case Look::Rest:
        return QStringLiteral("rest");
    case Look::Hover:
        return QStringLiteral("hover");
    case Look::Pressed:
        return QStringLiteral("pressed");
    case Look::Focus:
        return QStringLiteral("focus");
    case Look::Disabled:
        return QStringLiteral("disabled");
    case Look::Error:
        return QStringLiteral("error");
    case Look::ErrorFocus:
        return QStringLiteral("error, focus");
    }
    return {};
}

void sendMouse(QWidget* widget, QEvent::Type type, Qt::MouseButton button)
{
    QMouseEvent event(type, widget->rect().center(), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void press(QWidget* widget)
{
    sendMouse(widget, QEvent::MouseButtonPress, Qt::LeftButton);
    widget->clearFocus();
}

// The looks of a composite are those of its field.
void setLook(QWidget* specimen, Look look)
{
    auto* composite = qobject_cast<VantLineEdit*>(specimen);
    QWidget* widget = composite ? composite->getLineEdit() : specimen;
    if (look == Look::Error || look == Look::ErrorFocus) {
        widget->setProperty("error", true);
        widget->style()->polish(widget);
    }
    if (look == Look::Hover || look == Look::Pressed) {
        putPointerOn(widget);
    }
    if (look == Look::Pressed) {
        press(widget);
    }
    if (look == Look::Focus || look == Look::ErrorFocus) {
        widget->setFocus(Qt::TabFocusReason);
    }
    specimen->setEnabled(look != Look::Disabled);
}

QFont captionFont()
{
    QFont font = QApplication::font();
    font.setPixelSize(px(11));
    return font;
}

QPixmap canvas(QSize size)
{
    const qreal ratio = DPIinfo::getInstance().getDPR();
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(themeColour(QStringLiteral("panel")));
    return pixmap;
}

QSize logicalSize(const QPixmap& pixmap)
{
    return pixmap.size() / pixmap.devicePixelRatio();
}

} // namespace

QColor themeColour(const QString& name)
{
    QFile file(UIPathManager::getInstance().getPath(QStringLiteral("resource_path"))
        + QStringLiteral("/palette.json"));
    const QByteArray palette = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QColor colour(QJsonDocument::fromJson(palette)[name].toString());
    return colour.isValid() ? colour : QColor(Qt::white);
}

void putPointerOn(QWidget* widget)
{
    widget->setAttribute(Qt::WA_UnderMouse);
    QEvent event(QEvent::Enter);
    QCoreApplication::sendEvent(widget, &event);
    sendMouse(widget, QEvent::MouseMove, Qt::NoButton);
}

QPixmap pictureOf(QWidget* widget, int margin, const QColor& ground, const std::function<void()>& prepare)
{
    QWidget window;
    QPalette palette = window.palette();
    palette.setColor(QPalette::Window, ground);
    window.setPalette(palette);
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(px(margin), px(margin), px(margin), px(margin));
    layout->addWidget(widget);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    window.show();
    QApplication::setActiveWindow(&window);
    window.setFocusPolicy(Qt::StrongFocus);
    window.setFocus();
    prepare();
    QCoreApplication::processEvents();
    return window.grab();
}

QPixmap pictureOf(QWidget* widget, int margin, const QColor& ground)
{
    return pictureOf(widget, margin, ground, [] {});
}

QPixmap pictureOf(const Specimens& specimens)
{
    const QFontMetrics metrics(captionFont());
    QSize cell(px(64), px(24));
    int nameWidth = 0;
    std::set<Look> columns;
    std::vector<std::map<Look, QPixmap>> rows;
    for (const Specimen& specimen : specimens) {
        auto& row = rows.emplace_back();
        for (const Look look : specimen.looks) {
            QWidget* widget = specimen.make();
            row[look] = pictureOf(
                widget, 4, themeColour(QStringLiteral("panel")), [widget, look] { setLook(widget, look); });
            cell = cell.expandedTo(logicalSize(row[look]));
            columns.insert(look);
        }
        nameWidth = std::max(nameWidth, metrics.size(0, specimen.name).width());
    }

    const int pad = px(12);
    const int left = pad + nameWidth + pad;
    const int top = pad + metrics.height() + px(4);
    const auto columnOf = [&](Look look) {
        return left + static_cast<int>(std::distance(columns.begin(), columns.find(look))) * cell.width();
    };
    QPixmap sheet = canvas({ left + cell.width() * static_cast<int>(columns.size()) + pad,
        top + cell.height() * static_cast<int>(rows.size()) + pad });
    QPainter painter(&sheet);
    painter.setFont(captionFont());
    painter.setPen(themeColour(QStringLiteral("ink-faint")));
    for (const Look look : columns) {
        painter.drawText(columnOf(look) + px(4), pad + metrics.ascent(), nameOf(look));
    }
    int y = top;
    for (std::size_t row = 0; row < rows.size(); ++row, y += cell.height()) {
        painter.drawText(QRect(pad, y, nameWidth, cell.height()), Qt::AlignVCenter, specimens[row].name);
        for (const auto& [look, picture] : rows[row]) {
            const int above = (cell.height() - logicalSize(picture).height()) / 2;
            painter.drawPixmap(columnOf(look), y + above, picture);
        }
    }
    return sheet;
}

QPixmap contactSheet(const std::vector<std::pair<QString, QPixmap>>& pictures, int columns)
{
    const QFontMetrics metrics(captionFont());
    QSize cell;
    for (const auto& [name, picture] : pictures) {
        cell = cell.expandedTo(logicalSize(picture));
        cell.setWidth(std::max(cell.width(), metrics.horizontalAdvance(name)));
    }
    const QSize step = cell + QSize(px(16), metrics.height() + px(16));
    const int rows = (int(pictures.size()) + columns - 1) / columns;
    QPixmap sheet = canvas({ step.width() * columns + px(16), step.height() * rows + px(16) });
    QPainter painter(&sheet);
    painter.setFont(captionFont());
    painter.setPen(themeColour(QStringLiteral("ink-faint")));
    for (int i = 0; i < int(pictures.size()); ++i) {
        const auto& [name, picture] = pictures[std::size_t(i)];
        const QPoint corner(px(16) + i % columns * step.width(), px(16) + i / columns * step.height());
        const QSize size = logicalSize(picture);
        painter.drawPixmap(
            corner + QPoint((cell.width() - size.width()) / 2, (cell.height() - size.height()) / 2), picture);
        painter.drawText(
            QRect(corner + QPoint(0, cell.height() + px(2)), QSize(cell.width(), metrics.height())),
            Qt::AlignHCenter, name);
    }
    return sheet;
}
