#include "pages.h"

namespace gallery {

Page* createButtonsPage();
Page* createInputsPage();
Page* createFieldsPage();
Page* createLabelsPage();
Page* createFootbarPage();
Page* createSheetsPage();
Page* createFilesPage();

const QList<PageInfo>& pages()
{
    static const QList<PageInfo> table = {
        { "buttons", createButtonsPage, { "disabled", "focus" } },
        { "inputs", createInputsPage, { "disabled", "focus", "combo", "menu" } },
        { "fields", createFieldsPage, { "disabled", "focus", "error" } },
        { "labels", createLabelsPage, { "disabled", "narrow", "focus" } },
        { "footbar", createFootbarPage, { "disabled", "filled" } },
        { "sheets", createSheetsPage,
            { "disabled", "information", "warning", "question", "upgrading", "warningquestion", "long",
                "processing", "movie", "input", "box", "countdown" } },
        { "files", createFilesPage,
            { "selected", "filtered", "kinds", "rename", "failure", "deep", "disabled" } },
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
