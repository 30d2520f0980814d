#include "widgets/vant-combo-box.h"

#include "style-manager/style-manager.h"
#include "utils/dpi-info.h"

#include <QAbstractItemView>
#include <QStyledItemDelegate>

namespace {

// Both rules are filled in after the sheet was scaled: the padding keeps its fraction, the border is 1 at
// every scale.

QString paddingRule()
{
    const QString padding = QString::number(6.0 * DPIinfo::getInstance().getDPI(), 'g', 6);
    return QStringLiteral("padding-left: %1px; \npadding-right: %1px;").arg(padding);
}

const QLatin1String borderRule("border: 1px solid #C8D2DC;");

} // namespace

VantComboBox::VantComboBox(QWidget* parent)
    : QComboBox(parent)
    , listDelegate(new QStyledItemDelegate) // deleted by the destructor
{
    QString sheet = getStyleSheet("component.combobox", false);
    if (!sheet.isEmpty()) {
        sheet = sheet.arg(paddingRule()).arg(borderRule);
    }
    setStyleSheet(sheet + getStyleSheet("component.scrollbar", false));
    view()->setItemDelegate(listDelegate);
}

VantComboBox::~VantComboBox()
{
    delete listDelegate;
}
