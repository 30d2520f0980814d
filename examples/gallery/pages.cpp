#include "pages.h"

namespace gallery {

Page* createButtonsPage();
Page* createInputsPage();
Page* createFieldsPage();
Page* createLabelsPage();
Page* createFootbarPage();
Page* createTreePage();
Page* createSheetsPage();
Page* createFilesPage();
Page* createPagingPage();
Page* createFilterPage();
Page* createTablePage();

const QList<PageInfo>& pages()
{
    static const QList<PageInfo> table = {
        { "buttons", createButtonsPage, { "disabled", "focus" } },
        { "inputs", createInputsPage, { "disabled", "focus", "combo", "menu" } },
        { "fields", createFieldsPage, { "disabled", "focus", "error" } },
        { "labels", createLabelsPage, { "disabled", "narrow", "focus" } },
        { "footbar", createFootbarPage, { "disabled", "filled" } },
        { "tree", createTreePage, { "disabled", "hover", "rename", "menu", "deep" } },
        { "sheets", createSheetsPage,
            { "disabled", "information", "warning", "question", "upgrading", "warningquestion", "long",
                "processing", "movie", "input", "box", "countdown" } },
        { "files", createFilesPage,
            { "selected", "filtered", "kinds", "rename", "failure", "deep", "disabled" } },
        { "paging", createPagingPage, { "disabled", "focus", "last", "huge", "plain" } },
        { "filter", createFilterPage, { "disabled", "focus", "keyword", "menu" } },
        { "table", createTablePage, { "disabled", "selected", "many", "narrow", "empty" } },
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
