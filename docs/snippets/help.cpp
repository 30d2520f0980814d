#include "snippets.h"

#include <vantkit-qt/vantkit.h>

//! [help]
void showHelp(const QString& helpFolder, QWidget* window)
{
    HelpContext page;
    page.lang = VantLocale::getInstance().getDefaultLanguage();
    page.helpPath = helpFolder; // with a folder in it for each language
    page.link = "overview.html";
    page.section = "start";

    auto* help = new HelpWindow(page, window); // asks the web at once
    help->setAttribute(Qt::WA_DeleteOnClose);
    help->setWindowTitle("Help");
    help->resize(800, 680);
    help->show();
}

//! [help]
