#include "pages.h"

namespace gallery {

Page* createButtonsPage();
Page* createInputsPage();
Page* createLabelsPage();
Page* createFootbarPage();

const QList<PageInfo>& pages()
{
    static const QList<PageInfo> table = {
        { "buttons", createButtonsPage, { "disabled", "focus" } },
        { "inputs", createInputsPage, { "disabled", "focus", "combo", "menu" } },
        { "labels", createLabelsPage, { "disabled", "narrow", "focus" } },
        { "footbar", createFootbarPage, { "disabled", "filled" } },
    };
    return table;
}

QStringList pageNames()
{
    QStringList names;
    for (const PageInfo& page : pages()) {
        names << page.name;
    }
    return names;
}

} // namespace gallery
