#include "sheets/sheet-accessible_p.h"
#include "sheets/vant-sheet.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class SheetAccessible : public QAccessibleWidget
{
public:
    explicit SheetAccessible(VantSheet* sheet)
        : QAccessibleWidget(sheet, QAccessible::Dialog)
    { }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = true;
        return state;
    }
};

QAccessibleInterface* sheetInterface(const QString& /*className*/, QObject* object)
{
    auto* sheet = qobject_cast<VantSheet*>(object);
    return sheet ? new SheetAccessible(sheet) : nullptr; // the cache of QAccessible owns it
}

} // namespace

void vantkit::internal::installSheetAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(sheetInterface);
        return true;
    }();
    Q_UNUSED(installed)
}
