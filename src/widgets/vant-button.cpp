#include "widgets/vant-button.h"

#include "style-manager/style-manager.h"

namespace {

const char* styleKey(int kind)
{
    switch (kind) {
    case 0:
        return "component.apply_button";
    case 1:
        return "component.cancel_button";
    case 2:
        return "component.select_paging_button";
    case 3:
        return "component.nonselect_paging_button";
    case 4:
        return "component.default_button";
    case 5:
        return "component.red_button";
    default:
        return nullptr;
    }
}

} // namespace

VantButton::VantButton(const QString& text, int kind)
    : QPushButton(text)
{
    setFlat(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (const char* key = styleKey(kind)) {
        setStyleSheet(getStyleSheet(key, false));
    }
}
