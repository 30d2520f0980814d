#include "support/display-scale.h"
#include "support/themed-test.h"

#include <functional>
#include <map>
#include <memory>

/**
 * What a widget is right after its constructor: the properties of it and its parts
 * that show in no other test.
 */
class ConstructionTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:
    void parts_data();
    void parts();
};

namespace {

using Maker = std::function<QWidget*(QWidget*)>;

VantTableColumnsInfo columns()
{
    VantTableColumnsInfo info;
    info.addColumn("fixed", 100, false, 0.5);
    info.addColumn("shared", 100, true, 1.0);
    return info;
}

QWidget* pathRow(QWidget* window)
{
    auto* bar = new VantButtonPath(window);
    bar->refresh("name/last");
    return bar;
}

const std::map<QString, Maker> makers {
    { "button-0", [](QWidget* /*window*/) { return new VantButton("text", 0); } },
    { "button-4", [](QWidget* /*window*/) { return new VantButton("text", 4); } },
    { "button-5", [](QWidget* /*window*/) { return new VantButton("text", 5); } },
    { "button-6", [](QWidget* /*window*/) { return new VantButton("text", 6); } },
    { "icon-button-of-a-picture", [](QWidget* /*window*/) { return new VantIconButton(QPixmap(9, 9)); } },
    { "icon-button", [](QWidget* /*window*/) { return new VantIconButton(QString("bt_pagebar_next")); } },
    { "check-box", [](QWidget* window) { return new VantCheckBox("text", window); } },
    { "radio-button", [](QWidget* window) { return new VantRadioButton("text", window); } },
    { "label", [](QWidget* window) { return new VantLabel("text", window); } },
    { "line-edit", [](QWidget* window) { return new VantLineEdit(window); } },
    { "path-bar", [](QWidget* window) { return new VantButtonPath(window); } },
    { "path-row", pathRow },
    { "paging-bar",
        [](QWidget* window) { return new VantPagingBar(new VantPagingModel(10, window), window); } },
    { "table", [](QWidget* window) { return new VantTableWidget(columns(), window); } },
    { "calendar", [](QWidget* window) { return new VantCalanderView(window); } },
    { "date-selector", [](QWidget* window) { return new VantDateSelector("none", window); } },
    { "filter-bar", [](QWidget* window) { return new VantFilterBar(window); } },
    { "message-sheet",
        [](QWidget* window) {
            return new VantMessageSheet(VantMessageSheet::Question, "text", "more", window);
        } },
    { "input-sheet", [](QWidget* window) { return new VantInputSheet("text", window); } },
    { "countdown-box", [](QWidget* window) { return new VantCountdownMessageBox(3, window); } },
    { "browser-window", [](QWidget* window) { return new BrowserWindow(window); } },
};

/**
 * A widget, a part of it and what that is like. Parts are "#" and an object name, or a class and a number
 * among those of that class; px are design pixels, and @ stands before style keys.
 */
const char* const expectations = R"(
button-0                             text=text styleSheet=@apply_button
button-4                             styleSheet=@default_button
button-5                             styleSheet=@red_button
button-6                             flat=true sizePolicy=Fixed/Fixed styleSheet=
icon-button-of-a-picture             sizePolicy=Fixed/Fixed styleSheet=@icon_button popupMode=InstantPopup
icon-button                          sizePolicy=Fixed/Fixed styleSheet=@icon_button
icon-button                          popupMode=InstantPopup toolButtonStyle=ToolButtonIconOnly
check-box                            styleSheet=@checkbox
radio-button                         styleSheet=@radio_button
label                                styleSheet=@label
line-edit QHBoxLayout:0              margins=0,0,0,0 spacing=0 alignment=1
line-edit QLineEdit:0                styleSheet=@lineedit
line-edit QLabel:0                   styleSheet=@lineedit_label
line-edit QLabel:1                   styleSheet=@lineedit_label
path-bar                             styleSheet=@button_path minimumHeight=28px maximumHeight=28px
path-bar                             showGrid=false selectionMode=NoSelection focusPolicy=NoFocus
path-bar                             horizontalScrollBarPolicy=ScrollBarAlwaysOff
path-bar                             horizontalScrollMode=ScrollPerPixel
path-bar QHeaderView:0               hidden=true
path-bar QHeaderView:1               hidden=true
path-bar QToolButton:0               styleSheet=@button_path_change_folder_btn popupMode=InstantPopup
path-bar QToolButton:0               iconSize=20x20 hidden=true geometry=1px,1px,26px,26px image=folder
path-row QPushButton:0               styleSheet=@button_path_name_button flat=true
path-row QPushButton:0               minimumHeight=26px maximumHeight=26px
path-row QPushButton:1               styleSheet=@button_path_arrow flat=true focusPolicy=NoFocus
path-row QPushButton:1               image=bt_next minimumSize=6pxx28px maximumSize=6pxx28px
paging-bar #PAGINGBARBORDER          styleSheet=@paging_bar_border minimumHeight=29px maximumHeight=29px
paging-bar QHBoxLayout:2             alignment=130
paging-bar VantIconButton:0          toolTip=first_page image=bt_pagebar_backend
paging-bar VantIconButton:1          toolTip=prev_5_pages image=bt_pagebar_back
paging-bar VantIconButton:2          toolTip=next_5_pages image=bt_pagebar_next
paging-bar VantIconButton:3          toolTip=last_page image=bt_pagebar_nextend
paging-bar VantIconButton:4          image=bt_pagebar_refresh
paging-bar VantIconButton:4          toolTip= accessibleName=pagebar_refresh maximumSize=24pxx24px
paging-bar VantButton:1              styleSheet=@nonselect_paging_button
paging-bar VantButton:2              styleSheet=@select_paging_button text=1
paging-bar VantButton:2              minimumHeight=27px maximumHeight=27px
table QVBoxLayout:0                  margins=0,0,0,0 spacing=0
table ResizeSignalTableWidget:0      styleSheet=@table@scrollbar showGrid=false
table ResizeSignalTableWidget:0      selectionBehavior=SelectRows editTriggers=NoEditTriggers
table ResizeSignalTableWidget:0      verticalScrollMode=ScrollPerPixel horizontalScrollMode=ScrollPerPixel
table ResizeSignalTableWidget:0      verticalScrollBarPolicy=ScrollBarAlwaysOn
table QHeaderView:0                  styleSheet=@table_header minimumSectionSize=12px mode0=2 mode1=0 mode2=2
table QHeaderView:0                  minimumSize=20000pxx30px textElideMode=ElideRight
table QHeaderView:0                  horizontalScrollMode=ScrollPerPixel
table QHeaderView:0                  defaultAlignment=AlignLeading|AlignVCenter
table QHeaderView:1                  hidden=true defaultSectionSize=28px
table QHeaderView:2                  hidden=true mode0=2 mode1=0 minimumSectionSize=1
table QScrollArea:0                  minimumHeight=30px maximumHeight=30px focusPolicy=NoFocus
table QScrollArea:0                  verticalScrollBarPolicy=ScrollBarAlwaysOff
table QScrollArea:0                  horizontalScrollBarPolicy=ScrollBarAlwaysOff
calendar                             selectionMode=NoSelection accessibleName=accessible_calendar
calendar #qt_calendar_today_button   text=today maximumHeight=24px styleSheet=@cancel_button
calendar QCalendarWidget:0           firstDayOfWeek=Sunday horizontalHeaderFormat=NoHorizontalHeader
calendar QCalendarWidget:0           verticalHeaderFormat=NoVerticalHeader
calendar #qt_calendar_navigationbar  autoFillBackground=false
calendar #qt_calendar_prevmonth      focusPolicy=StrongFocus accessibleName=accessible_calendar_prev_month
calendar #qt_calendar_nextmonth      focusPolicy=StrongFocus accessibleName=accessible_calendar_next_month
calendar #qt_calendar_monthbutton    focusPolicy=StrongFocus
calendar #qt_calendar_yearbutton     focusPolicy=StrongFocus
calendar #qt_calendar_weekdayview    styleSheet=@table focusPolicy=NoFocus maximumHeight=30px showGrid=false
calendar #qt_calendar_weekdayview    horizontalScrollBarPolicy=ScrollBarAlwaysOff frameShape=NoFrame
calendar #qt_calendar_weekdayview    editTriggers=NoEditTriggers selectionMode=NoSelection
calendar #qt_calendar_weekdayview    sizeAdjustPolicy=AdjustToContents
calendar QHeaderView:3               styleSheet=@table_header defaultSectionSize=30
date-selector                        minimumHeight=32px maximumHeight=32px styleSheet=@date_selector@menu
date-selector VantCalanderView:0     minimumHeight=260px maximumHeight=260px maximumWidth=280px
filter-bar                           styleSheet=@lineedit@filter_bar_padding
filter-bar                           minimumHeight=28px maximumHeight=28px
filter-bar VantIconButton:0          styleSheet=@filter_search_button focusPolicy=NoFocus
filter-bar VantIconButton:0          image=bt_search_dropdown
filter-bar VantIconButton:0          geometry=4px,2px,34px,24px
message-sheet                        sizePolicy=Fixed/Maximum styleSheet=@message_sheet_other
message-sheet QVBoxLayout:0          margins=20px,20px,20px,10px spacing=0
message-sheet QLabel:0               sizePolicy=Minimum/Maximum wordWrap=true focusPolicy=StrongFocus
message-sheet QLabel:0               styleSheet=@message_sheet_text openExternalLinks=true alignment=AlignTop
message-sheet QLabel:1               sizePolicy=Maximum/Maximum
message-sheet QLabel:2               sizePolicy=Minimum/Maximum wordWrap=true focusPolicy=StrongFocus
message-sheet QLabel:2               openExternalLinks=true alignment=AlignLeading|AlignTop
message-sheet QPushButton:0          styleSheet=@apply_button default=true
message-sheet QPushButton:0          minimumSize=120pxx28px maximumHeight=28px
message-sheet QPushButton:1          styleSheet=@cancel_button minimumSize=80pxx28px maximumHeight=28px
input-sheet                          sizePolicy=Fixed/Maximum styleSheet=@message_sheet_other
input-sheet QVBoxLayout:0            margins=10px,10px,10px,10px spacing=0
input-sheet QLabel:0                 sizePolicy=Minimum/Maximum wordWrap=true alignment=AlignTop
input-sheet QLineEdit:0              styleSheet=@lineedit minimumHeight=28px maximumHeight=28px
input-sheet QPushButton:0            styleSheet=@apply_button default=true text=ok
input-sheet QPushButton:1            styleSheet=@cancel_button text=cancel
countdown-box                        styleSheet=@info_message_box
countdown-box QPushButton:0          styleSheet=@apply_button
countdown-box QPushButton:1          styleSheet=@cancel_button text=cancel
browser-window                       windowModality=ApplicationModal styleSheet=@scrollbar
)";

QObject* partOf(QObject* root, const QString& path)
{
    if (path.startsWith('#')) {
        return root->findChild<QObject*>(path.mid(1));
    }
    QObjectList parts = root->findChildren<QObject*>();
    const QString name = path.section(':', 0, 0);
    parts.erase(std::remove_if(parts.begin(), parts.end(),
                    [&name](QObject* part) { return part->metaObject()->className() != name; }),
        parts.end());
    return path.isEmpty() ? root : parts.value(path.section(':', 1).toInt());
}

QString numbers(std::initializer_list<int> list)
{
    QStringList texts;
    std::transform(list.begin(), list.end(), std::back_inserter(texts),
        [](int number) { return QString::number(number); });
    return texts.join(',');
}

/** What tells one icon from another. */
QString hashOf(const QIcon& icon)
{
    const QImage image = icon.pixmap(QSize(64, 64)).toImage();
    return QString::number(qHashBits(image.constBits(), static_cast<size_t>(image.sizeInBytes())));
}

/** Of a property of Qt's, or of what stands in a layout. */
QString textOf(QObject* part, const QByteArray& name)
{
    if (auto* layout = qobject_cast<QLayout*>(part); layout && name != "spacing") {
        const QMargins margins = layout->contentsMargins();
        return name == "margins"
            ? numbers({ margins.left(), margins.top(), margins.right(), margins.bottom() })
            : numbers({ static_cast<int>(layout->alignment()) });
    }
    if (name == "image") {
        return hashOf(static_cast<QAbstractButton*>(part)->icon());
    }
    if (name.startsWith("mode")) {
        return numbers({ static_cast<QHeaderView*>(part)->sectionResizeMode(name.mid(4).toInt()) });
    }
    if (name == "hidden") {
        return QVariant(static_cast<QWidget*>(part)->isHidden()).toString();
    }
    const QMetaProperty property = part->metaObject()->property(part->metaObject()->indexOfProperty(name));
    const QVariant value = property.read(part);
    if (property.isEnumType()) {
        return property.enumerator().valueToKeys(value.toInt());
    }
    if (value.type() == QVariant::SizePolicy) {
        const auto policy = value.value<QSizePolicy>();
        const auto names = QMetaEnum::fromType<QSizePolicy::Policy>();
        return QString("%1/%2").arg(
            names.valueToKey(policy.horizontalPolicy()), names.valueToKey(policy.verticalPolicy()));
    }
    if (value.type() == QVariant::Size) {
        return QString("%1x%2").arg(value.toSize().width()).arg(value.toSize().height());
    }
    const QRect rect = value.toRect();
    return rect.isNull() ? value.toString() : numbers({ rect.x(), rect.y(), rect.width(), rect.height() });
}

QString expected(QString text)
{
    if (text.startsWith('@')) {
        QString sheets;
        for (const QString& key : text.mid(1).split('@')) {
            sheets += getStyleSheet("component." + key);
        }
        return sheets;
    }
    static const QRegularExpression pixels("(\\d+)px");
    for (auto match = pixels.match(text); match.hasMatch(); match = pixels.match(text)) {
        const int size = match.captured(1).toInt() * displayscale::dpi() / 96;
        text.replace(match.capturedStart(), match.capturedLength(), QString::number(size));
    }
    return text;
}

} // namespace

void ConstructionTest::parts_data()
{
    QTest::addColumn<QStringList>("words");
    for (const QString& line : QString(expectations).split('\n', Qt::SkipEmptyParts)) {
        QTest::newRow(qPrintable(line)) << line.split(' ', Qt::SkipEmptyParts);
    }
}

void ConstructionTest::parts()
{
    QFETCH(QStringList, words);
    QWidget window;
    window.resize(1000, 600);
    const std::unique_ptr<QWidget> widget(makers.at(words.takeFirst())(&window));
    QObject* part = partOf(widget.get(), words[0].contains('=') ? QString() : words.takeFirst());
    QVERIFY(part);
    for (const QString& word : words) {
        const QString name = word.section('=', 0, 0);
        const QString text = word.section('=', 1);
        QCOMPARE(name + '=' + textOf(part, name.toLatin1()),
            name + '=' + (name == "image" ? hashOf(getGlobalImage(text)) : expected(text)));
    }
}

QTEST_MAIN(ConstructionTest)

#include "construction-test.moc"
