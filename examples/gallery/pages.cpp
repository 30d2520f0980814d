#include "pages.h"

namespace gallery {

Page* createButtonsPage(QWidget* parent);
Page* createInputsPage(QWidget* parent);
Page* createFieldsPage(QWidget* parent);
Page* createLabelsPage(QWidget* parent);
Page* createFootbarPage(QWidget* parent);
Page* createPathPage(QWidget* parent);
Page* createSheetsPage(QWidget* parent);
Page* createTablePage(QWidget* parent);
Page* createPagingPage(QWidget* parent);
Page* createTreePage(QWidget* parent);
Page* createCalendarPage(QWidget* parent);
Page* createDatesPage(QWidget* parent);
Page* createFilterPage(QWidget* parent);
Page* createFilesPage(QWidget* parent);

const QList<PageInfo>& pages()
{
    static const QList<PageInfo> table = {
        { "buttons", createButtonsPage, { "disabled", "focus", "help", "code" } },
        { "inputs", createInputsPage, { "disabled", "focus", "combo", "menu" } },
        { "fields", createFieldsPage, { "disabled", "focus", "error" } },
        { "labels", createLabelsPage, { "disabled", "narrow", "focus" } },
        { "footbar", createFootbarPage, { "disabled", "filled" } },
        { "path", createPathPage, { "disabled", "hover", "focus", "hidden" } },
        { "sheets", createSheetsPage,
            { "disabled", "information", "warning", "question", "upgrading", "warningquestion", "long",
                "processing", "movie", "input", "box", "countdown" } },
        { "table", createTablePage, { "disabled", "selected", "many", "narrow", "empty" } },
        { "paging", createPagingPage, { "disabled", "focus", "last", "huge", "plain" } },
        { "tree", createTreePage, { "disabled", "hover", "rename", "menu", "deep" } },
        { "calendar", createCalendarPage, { "disabled", "focus", "bar", "frame", "month", "year" } },
        { "dates", createDatesPage, { "disabled", "focus", "popup", "month", "year" } },
        { "filter", createFilterPage, { "disabled", "focus", "keyword", "kind", "nothing", "menu" } },
        { "files", createFilesPage,
            { "selected", "filtered", "nothing", "kinds", "failure", "deep", "help", "disabled" } },
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
