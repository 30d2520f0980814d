#include "controls.h"

#include "texts.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/utils/dpi-info.h>
#include <vantkit-qt/utils/ui-path-manager.h>
#include <vantkit-qt/views/vant-calander-view.h>
#include <vantkit-qt/views/vant-table-widget.h>
#include <vantkit-qt/widgets/vant-button.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCalendarWidget>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtMath>

namespace gallery {

namespace {

// Qt would put a text where its own direction begins, and in a mirrored window that is the wrong side of its
// title.
Qt::Alignment whereWindowsBegin()
{
    return QStyle::visualAlignment(QApplication::layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter)
        | Qt::AlignAbsolute;
}

class ShortenedLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (sizeHint().width() <= width()) {
            QLabel::paintEvent(event); // with what is selected in it
            return;
        }
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        QPainter painter(this);
        painter.setLayoutDirection(layoutDirection());
        style()->drawItemText(&painter, rect(), alignment(), palette(), isEnabled(), shown, foregroundRole());
    }
};

QLabel* styled(QLabel* label, const char* key)
{
    label->setAlignment(whereWindowsBegin());
    label->setStyleSheet(getStyleSheet(key));
    return label;
}

} // namespace

VantTheme currentTheme()
{
    return VantTheme(UIPathManager::getInstance().getPath(QStringLiteral("resource_path")));
}

int px(int designPixels)
{
    return static_cast<int>(designPixels * DPIinfo::getInstance().getDPI());
}

QLabel* styledLabel(const QString& text, const char* key, QWidget* parent)
{
    return styled(new QLabel(text, parent), key);
}

QLabel* wrappedLabel(const QString& text, const char* key, QWidget* parent)
{
    QLabel* label = styledLabel(text, key, parent);
    label->setWordWrap(true);
    return label;
}

QLabel* shortenedLabel(const QString& text, const char* key, QWidget* parent)
{
    QLabel* label = styled(new ShortenedLabel(text, parent), key);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(1);
    return label;
}

// Some platforms know of no font for it.
QFont codeFont(int pixelSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        font = QFont(QStringLiteral("monospace"));
    }
    font.setPixelSize(px(pixelSize));
    return font;
}

QFrame* styledFrame(const char* name, const char* key, QWidget* parent)
{
    auto* frame = new QFrame(parent);
    frame->setObjectName(QLatin1String(name));
    frame->setStyleSheet(getStyleSheet(key));
    return frame;
}

VantButton* button(const QString& text, int kind)
{
    auto* button = new VantButton(text, kind);
    button->setMinimumWidth(qMax(px(80), button->sizeHint().width()));
    return button;
}

VantComboBox* comboBox(const QString& name, const QStringList& entries, int width)
{
    auto* box = new VantComboBox;
    box->setAccessibleName(name);
    box->addItems(entries);
    box->setFixedWidth(px(width));
    return box;
}

bool isWithinLimits(const VantCalanderView* view, const QDate& date)
{
    const auto* calendar = view->findChild<QCalendarWidget*>();
    return date >= calendar->minimumDate() && date <= calendar->maximumDate();
}

VantButton* filterSign(const QString& all)
{
    auto* sign = new VantButton({}, 4);
    sign->setToolTip(all);
    sign->setAccessibleDescription(all);
    sign->hide();
    return sign;
}

void showSign(VantButton* sign, const QString& what)
{
    sign->setText(what + QStringLiteral("  ×"));
    sign->setAccessibleName(what);
    sign->setHidden(what.isEmpty());
}

int columnWidth(const QString& title, const QStringList& texts)
{
    const int margin = 13; // on both sides, as the theme draws cells and sections
    QFont font = QApplication::font();
    font.setPixelSize(px(13));
    int widest = 0;
    for (const QString& text : texts) {
        widest = qMax(widest, QFontMetrics(font).horizontalAdvance(text));
    }
    font.setWeight(QFont::DemiBold);
    widest = qMax(widest, QFontMetrics(font).horizontalAdvance(title));
    return qCeil(widest / DPIinfo::getInstance().getDPI()) + 2 * margin
        + 1; // cells are laid out in whole pixels
}

int timeColumnWidth(const QString& title)
{
    return columnWidth(title, { QStringLiteral("2000-00-00 00:00") });
}

int sizeColumnWidth(const QString& title)
{
    return columnWidth(title, { sizeText(qint64(1000) << 30), sizeText(qint64(1000) << 10) });
}

void alignRight(VantTableWidget* table, int column)
{
    table->getHeader()->model()->setHeaderData(
        column, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
}

QLabel* addHint(QTableWidget* table)
{
    QLabel* hint = wrappedLabel({}, "gallery.caption");
    hint->setAlignment(Qt::AlignCenter);
    hint->setTextFormat(Qt::PlainText);
    auto* layout = new QVBoxLayout(table->viewport());
    layout->addWidget(hint);
    return hint;
}

const char* eventOf(Qt::CheckState state)
{
    switch (state) {
    case Qt::Checked:
        return "event.on";
    case Qt::PartiallyChecked:
        return "event.partial";
    case Qt::Unchecked:
        break;
    }
    return "event.off";
}

QLayout* labelled(const QString& text, QWidget* widget)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    QLabel* label = styledLabel(text, "gallery.text");
    label->setBuddy(widget);
    row->addWidget(label);
    row->addWidget(widget);
    return row;
}

QGridLayout* addLiveAndDisabled(QVBoxLayout* section)
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(12));
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->addWidget(styledLabel(text("state.live"), "gallery.caption"), 0, 0);
    grid->addWidget(styledLabel(text("state.disabled"), "gallery.caption"), 0, 1);
    section->addLayout(grid);
    return grid;
}

void addPair(QGridLayout* grid, QWidget* live, QWidget* disabled)
{
    disabled->setEnabled(false);
    const int row = grid->rowCount();
    grid->addWidget(live, row, 0, Qt::AlignLeft);
    grid->addWidget(disabled, row, 1, Qt::AlignLeft);
}

void openMenu(QToolButton* button)
{
    QMenu* menu = button->menu();
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    menu->setActiveAction(menu->actions().constFirst());
}

void freeze(QAbstractButton* button, Look look)
{
    button->setFocusPolicy(Qt::NoFocus);
    button->setAttribute(Qt::WA_TransparentForMouseEvents);
    button->setDown(look == Look::Pressed);
    button->setEnabled(look != Look::Disabled);
    if (look == Look::Hover) {
        button->ensurePolished();
        button->setAttribute(Qt::WA_UnderMouse);
        QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &move);
    }
}

} // namespace gallery
