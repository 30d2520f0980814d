#pragma once

#include "help/browser-window.h"
#include "vantkit-export.h"

#include <QString>

/** Which help page is wanted. */
struct HelpContext
{
    QString lang; ///< three letters as VantLocale gives them, or "tha"
    QString helpPath; ///< folder of the pages on disk, with one folder in it for each language
    QString link; ///< the page: its path below the folder of the language, and the web's name for it
    QString section; ///< told to the web
    QString version = QStringLiteral("1.0"); ///< told to the web
};

/**
 * A window with one page of help: from the maker's knowledge base on the web, or, if that fails or takes
 * longer than 10000 ms, from the copy that the application has on disk. Style key "component.scrollbar".
 *
 * The page on disk is `helpPath/lang/link`, in UTF-8, read up to the first NUL; its images are looked for in
 * `helpPath/lang`. Help is not written in every language: "deu", "esn" and "fra" are called "ger", "spn" and
 * "fre", on the web and on disk, and "dan", "sve", "hun", "trk", "nor", "ptg", "ptb" and "tha" read the
 * English page, "enu". Without a page on disk the window stays as it was, and says nothing.
 *
 * Whatever the web answers without an error is shown. The address of the knowledge base is set when the kit
 * is configured (`VANTKIT_KNOWLEDGE_BASE_URL`); it is asked for
 * `/cgi/knowledgebase/?action=findHelpFile&section=...&lang=...&link=...&unique=corvanta_utility_help&version=...`.
 * A plus sign in one of the texts is sent as it is, and means a plus sign.
 *
 * The window is modal to the application. Title and size are the application's to set, before it shows the
 * window with show() or exec().
 */
class VANTKIT_EXPORT HelpWindow : public BrowserWindow
{
    Q_OBJECT

public:
    /** Asks for the page at once; it is under way when the window is shown. */
    explicit HelpWindow(const HelpContext& page, QWidget* parent = nullptr);
    ~HelpWindow() override;

    /** Asks for the page again. */
    void retrieveHelpContent();

    /** Shows the page from disk. */
    void fallbackOffline() override;

private:
    HelpContext context;
    QString offlinePath;
};
