#pragma once

#include "vantkit-export.h"

#include <QList>
#include <QtCore/Qt>

/** @file
 * Which widgets of a window the keyboard can reach.
 */

class QWidget;

/** What accessibleList() leaves out. */
class VANTKIT_EXPORT AccessibleFilter
{
public:
    /** Leaves out nothing: no widgets, and the level Qt::NoFocus. */
    AccessibleFilter() = default;

    /** Leaves out @p filterWidgets, and what has a lower focus policy than @p focusLevel. */
    AccessibleFilter(const QList<QWidget*>& filterWidgets, Qt::FocusPolicy focusLevel);

    /** The widgets that are not listed; their children still are. */
    QList<QWidget*>& filterWidgets();
    /** Replaces the widgets that are not listed. The filter never deletes one. */
    void setFilterWidgets(const QList<QWidget*>& filterWidgets);

    /** The lowest focus policy, compared as a number, that a widget must have to be listed. */
    Qt::FocusPolicy focusLevel();
    /** Replaces the lowest focus policy: Qt::NoFocus lists every widget. */
    void setFocusLevel(Qt::FocusPolicy focusLevel);

private:
    QList<QWidget*> m_filter_widgets;
    Qt::FocusPolicy m_focus_level = Qt::NoFocus;
};

/**
 * The visible widgets of the tree of @p widget that can take the keyboard focus, itself included: parents
 * before their children, children in the order of QObject::children(). A widget in @p excluded is not listed,
 * but its children are. A hidden widget cuts off what is below it, and a null one gives an empty list.
 */
VANTKIT_EXPORT QList<QWidget*> accessibleList(QWidget* widget, QList<QWidget*> excluded);

/**
 * The same for the widgets that pass @p filter. A default filter lists every visible
 * widget, focusable or not.
 */
VANTKIT_EXPORT QList<QWidget*> accessibleList(QWidget* widget, AccessibleFilter filter);
