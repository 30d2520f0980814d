#include "utils/accessible-filter.h"

#include <QWidget>

namespace {

template <typename Passes>
void appendVisible(QList<QWidget*>& list, QWidget* widget, const Passes& passes)
{
    if (!widget || !widget->isVisible()) {
        return;
    }
    if (passes(widget)) {
        list += widget;
    }
    const QObjectList children = widget->children();
    for (QObject* child : children) {
        if (child->isWidgetType()) {
            appendVisible(list, static_cast<QWidget*>(child), passes);
        }
    }
}

} // namespace

AccessibleFilter::AccessibleFilter(const QList<QWidget*>& filterWidgets, Qt::FocusPolicy focusLevel)
    : m_filter_widgets(filterWidgets)
    , m_focus_level(focusLevel)
{ }

QList<QWidget*>& AccessibleFilter::filterWidgets()
{
    return m_filter_widgets;
}

void AccessibleFilter::setFilterWidgets(const QList<QWidget*>& filterWidgets)
{
    m_filter_widgets = filterWidgets;
}

Qt::FocusPolicy AccessibleFilter::focusLevel()
{
    return m_focus_level;
}

void AccessibleFilter::setFocusLevel(Qt::FocusPolicy focusLevel)
{
    m_focus_level = focusLevel;
}

QList<QWidget*> accessibleList(QWidget* widget, QList<QWidget*> excluded)
{
    QList<QWidget*> list;
    appendVisible(list, widget, [&excluded](QWidget* candidate) {
        return candidate->focusPolicy() != Qt::NoFocus && !excluded.contains(candidate);
    });
    return list;
}

QList<QWidget*> accessibleList(QWidget* widget, AccessibleFilter filter)
{
    QList<QWidget*> list;
    appendVisible(list, widget, [&filter](QWidget* candidate) {
        return candidate->focusPolicy() >= filter.focusLevel() && !filter.filterWidgets().contains(candidate);
    });
    return list;
}
