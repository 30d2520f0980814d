#include "pages.h"

namespace gallery {

Page* createButtonsPage();
Page* createInputsPage();
Page* createFieldsPage();
Page* createLabelsPage();
Page* createFootbarPage();
Page* createPathPage();
Page* createSheetsPage();

const QList<PageInfo>& pages()
{
    static const QList<PageInfo> table = {
        { "buttons", createButtonsPage, { "disabled", "focus" } },
        { "inputs", createInputsPage, { "disabled", "focus", "combo", "menu" } },
        { "fields", createFieldsPage, { "disabled", "focus", "error" } },
        { "labels", createLabelsPage, { "disabled", "narrow", "focus" } },
        { "footbar", createFootbarPage, { "disabled", "filled" } },
        { "path", createPathPage, { "disabled", "hover", "focus", "hidden" } },
        { "sheets", createSheetsPage,
            { "disabled", "information", "warning", "question", "upgrading", "warningquestion", "long",
                "processing", "movie", "input", "box", "countdown" } },
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
