#pragma once

#include "command-line.h"
#include "pages.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class QGridLayout;
class QLabel;
class QListWidget;
class VantButton;
class VantCheckBox;
class VantComboBox;

namespace gallery {

class Help;
class Page;
class PageArea;

/** The window of the gallery: navigation on the left, the page with its header and foot bar on the right. */
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    /** Opens the page that @p options name, the first one if they name none. */
    explicit GalleryWindow(const Options& options);

    /** Makes the window so high that the page shows without scrolling. */
    void growToPage();

    /** Brings the page into the state @p state: "disabled" or "help" on every page, or one of its own. */
    void enterState(const QString& state);

    /** Waits until the page is at rest, and the help, if it is open, has something to show. */
    void settle();

    /** The widget that a popup opens at in @p state, if one does. */
    QWidget* opener(const QString& state) const;

    /**
     * Takes up that the gallery was started again, before the window comes up: closes a menu that is open,
     * and goes to the page of the name @p page if there is one. While a question waits for its answer it
     * comes first, and the page opens afterwards.
     */
    void takeUpSecondStart(const QString& page);

    /** Shows the theme as its files are now, with page and place kept, once no question waits. */
    void takeUpTheme();

    /** Tells above the page why the files of the theme cannot be used. What shows stays. */
    void tellBrokenTheme(const QString& message);

Q_SIGNALS:
    /** The gallery is to be started anew, at @p fontDpi dots to the inch if it is not 0. */
    void startAnew(const gallery::Options& options, int fontDpi);

private:
    void build();
    QWidget* sidebar();
    QListWidget* navigation(QWidget* parent);
    QWidget* switches(QWidget* parent);
    VantComboBox* addSwitch(QGridLayout* grid, const char* key, const QRect& place);
    void addLanguageSwitch(QGridLayout* grid);
    void addThemeSwitch(QGridLayout* grid);
    void addScaleSwitch(QGridLayout* grid);
    void addDirectionSwitch(QGridLayout* grid);
    QWidget* header();
    QWidget* pageArea();
    QWidget* footbar();
    void setLanguage(const QString& code);
    void setRightToLeft(bool rightToLeft);
    void showPage(int index);
    void openPage();
    void openHelp();
    void takeUpWhatWaits();
    void openWantedPage();
    void rebuild();

    int m_index = 0;
    std::optional<int> m_wanted; ///< the page to go to as soon as the present one can be left
    bool m_themeHasChanged = false; ///< and is to be read as soon as the page can be left
    Options m_options;
    QWidget* m_content = nullptr;
    QListWidget* m_navigation = nullptr;
    VantComboBox* m_languages = nullptr;
    VantCheckBox* m_direction = nullptr;
    QLabel* m_brokenTheme = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_caption = nullptr;
    VantCheckBox* m_enabled = nullptr;
    PageArea* m_scrollArea = nullptr;
    Page* m_page = nullptr;
    QLabel* m_report = nullptr;
    VantButton* m_helpButton = nullptr;
    QPointer<Help> m_help; ///< while it is open
    VantButton* m_startAgain = nullptr;
    VantButton* m_close = nullptr;
};

} // namespace gallery
