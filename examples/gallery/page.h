#pragma once

#include <QWidget>

class QFrame;
class QHBoxLayout;
class QLayout;
class QVBoxLayout;

namespace gallery {

/** A page of the gallery: sections below one another, with widgets that the user can play with. */
class Page : public QWidget
{
    Q_OBJECT

public:
    /** Made where it is to lie: what is moved below another style sheet has its own read once more. */
    explicit Page(QWidget* parent);

    /** Lays the sections out in @p width pixels: in two columns where they have room side by side. */
    virtual void fitTo(int width);

    /** Enables or disables the live widgets of the page. */
    void setLiveEnabled(bool enabled);

    /** Brings the page into one of the states that its row in the table of pages names, for a picture. */
    virtual void enterState(const QString& state);

    /** Waits for what the page still does on its own, so that a picture shows it at rest. */
    virtual void settle();

    /** The widget that a popup opens at in @p state, if one does. */
    virtual QWidget* opener(const QString& state) const;

Q_SIGNALS:
    /** The user did something, told in words. */
    void happened(const QString& what);

protected:
    /**
     * Adds a section with the texts `<key>.title` and `<key>.caption`, and with the snippet @p key, for
     * @p classes of the kit. Its layout takes the content.
     */
    QVBoxLayout* addSection(const char* key, const char* classes);

    /** Opens the code of the section @p key. */
    void showCode(const QString& key);

    /** Has @p widget follow setLiveEnabled(), and returns it. */
    template <class Widget>
    Widget* live(Widget* widget)
    {
        m_live << widget;
        return widget;
    }

private:
    QLayout* sectionHead(QWidget* section, const QString& key, const QString& classes);
    int sectionsOfHalf() const;

    QHBoxLayout* m_layout;
    QVBoxLayout* m_columns[2];
    bool m_isWide = false; ///< in two columns
    QList<QFrame*> m_sections;
    QList<QWidget*> m_live;
};

} // namespace gallery
