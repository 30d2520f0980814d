#include "views/bar-button-accessible_p.h"
#include "views/vant-filter-bar.h"
#include "views/vant-paging-bar.h"
#include "widgets/vant-button.h"
#include "widgets/vant-icon-button.h"

#include <QAccessible>
#include <QAccessibleWidget>

using vantkit::internal::standsForPage;

namespace {

// Qt's own interface of a tool button asks the button for its name, and does not open its menu.
class FilterButtonAccessible : public QAccessibleWidget
{
public:
    explicit FilterButtonAccessible(VantIconButton* filterButton)
        : QAccessibleWidget(filterButton, QAccessible::ButtonMenu)
        , button(filterButton)
    { }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? parent()->text(kind) : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = button->menu() != nullptr;
        return state;
    }

    QStringList actionNames() const override
    {
        return button->menu() && button->isEnabled() ? QStringList(showMenuAction()) : QStringList();
    }

    void doAction(const QString& name) override
    {
        if (actionNames().contains(name)) {
            button->showMenu();
        }
    }

private:
    VantIconButton* button;
};

class PageButtonAccessible : public QAccessibleWidget
{
public:
    explicit PageButtonAccessible(VantButton* pageButton)
        : QAccessibleWidget(pageButton, QAccessible::Button)
        , button(pageButton)
    { }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? button->text() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = state.invisible || !standsForPage(button);
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (button->isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction()) {
            button->click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    VantButton* button;
};

// The cache of QAccessible owns the interfaces.
QAccessibleInterface* barButtonInterface(const QString& /*className*/, QObject* object)
{
    QObject* parent = object->parent();
    auto* filterButton = qobject_cast<VantIconButton*>(object);
    if (filterButton && qobject_cast<VantFilterBar*>(parent)) {
        return new FilterButtonAccessible(filterButton);
    }
    auto* pageButton = qobject_cast<VantButton*>(object);
    if (pageButton && parent && qobject_cast<VantPagingBar*>(parent->parent())) {
        return new PageButtonAccessible(pageButton);
    }
    return nullptr;
}

} // namespace

void vantkit::internal::installBarButtonAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(barButtonInterface);
        return true;
    }();
    Q_UNUSED(installed)
}

bool vantkit::internal::standsForPage(const VantButton* pageButton)
{
    return !pageButton->text().trimmed().isEmpty();
}
