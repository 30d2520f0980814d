#include "pages.h"

namespace gallery {

Page* createButtonsPage();
Page* createInputsPage();
Page* createFieldsPage();
Page* createLabelsPage();
Page* createFootbarPage();
Page* createTreePage();
Page* createPathPage();
Page* createSheetsPage();
Page* createPagingPage();
Page* createFilterPage();
Page* createTablePage();
Page* createCalendarPage();
Page* createDatesPage();

const QList<PageInfo>& pages()
{
    static const QList<PageInfo> table = {
        { "buttons", createButtonsPage, { "disabled", "focus" } },
        { "inputs", createInputsPage, { "disabled", "focus", "combo", "menu" } },
        { "fields", createFieldsPage, { "disabled", "focus", "error" } },
        { "labels", createLabelsPage, { "disabled", "narrow", "focus" } },
        { "footbar", createFootbarPage, { "disabled", "filled" } },
        { "tree", createTreePage, { "disabled", "hover", "rename", "menu", "deep" } },
        { "path", createPathPage, { "disabled", "hover", "focus", "hidden" } },
        { "sheets", createSheetsPage,
            { "disabled", "information", "warning", "question", "upgrading", "warningquestion", "long",
                "processing", "movie", "input", "box", "countdown" } },
        { "paging", createPagingPage, { "disabled", "focus", "last", "huge", "plain" } },
        { "filter", createFilterPage, { "disabled", "focus", "keyword", "menu" } },
        { "table", createTablePage, { "disabled", "selected", "many", "narrow", "empty" } },
        { "calendar", createCalendarPage, { "disabled", "focus", "bar", "frame", "month", "year" } },
        { "dates", createDatesPage, { "disabled", "focus", "popup", "day", "month", "year" } },
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
