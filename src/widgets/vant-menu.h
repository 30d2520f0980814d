#pragma once

#include "vantkit-export.h"

#include <QMenu>

/**
 * A menu that pulls itself back into the available area of its screen when it is shown.
 *
 * It has no style key of its own; "component.menu" is there to be set on it.
 */
class VANTKIT_EXPORT VantMenu : public QMenu
{
    Q_OBJECT

public:
    /** A menu without entries, opened by QMenu::popup(), QMenu::exec() or a button. */
    explicit VantMenu(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
};
