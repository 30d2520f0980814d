#include "help/help-window.h"

#include "help/html-text-browser.h"
#include "help/page-files_p.h"

#include <QMap>
#include <QStringList>
#include <QUrlQuery>

#include <optional>

namespace {

/** The code that help pages in @p language go by, those in English for a language without pages. */
QString languageOfPages(const QString& language)
{
    static const QMap<QString, QString> otherCodes = {
        { QStringLiteral("deu"), QStringLiteral("ger") },
        { QStringLiteral("esn"), QStringLiteral("spn") },
        { QStringLiteral("fra"), QStringLiteral("fre") },
    };
    static const QStringList withoutPages = { QStringLiteral("dan"), QStringLiteral("sve"),
        QStringLiteral("hun"), QStringLiteral("trk"), QStringLiteral("nor"), QStringLiteral("ptg"),
        QStringLiteral("ptb"), QStringLiteral("tha") };
    const QString code = otherCodes.value(language, language);
    return withoutPages.contains(code) ? QStringLiteral("enu") : code;
}

QUrl addressOf(const HelpContext& page)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("action"), QStringLiteral("findHelpFile"));
    query.addQueryItem(QStringLiteral("section"), page.section);
    query.addQueryItem(QStringLiteral("lang"), page.lang);
    query.addQueryItem(QStringLiteral("link"), page.link);
    query.addQueryItem(QStringLiteral("unique"), QStringLiteral("corvanta_utility_help"));
    query.addQueryItem(QStringLiteral("version"), page.version);

    QUrl address(QStringLiteral(VANTKIT_KNOWLEDGE_BASE_URL "/cgi/knowledgebase/?"));
    address.setQuery(query.query());
    return address;
}

} // namespace

HelpWindow::HelpWindow(const HelpContext& page, QWidget* parent)
    : BrowserWindow(parent)
    , context(page)
{
    context.lang = languageOfPages(context.lang);
    retrieveHelpContent();
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::retrieveHelpContent()
{
    url = addressOf(context);
    BrowserWindow::reload();
}

void HelpWindow::fallbackOffline()
{
    offlinePath = context.helpPath + QLatin1Char('/') + context.lang;
    textBrowser->setSearchPaths({ offlinePath });
    const std::optional<QString> page =
        vantkit::internal::readPage(offlinePath + QLatin1Char('/') + context.link);
    if (page) {
        textBrowser->setText(*page);
    }
}
