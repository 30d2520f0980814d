#include "snippets.h"

#include <vantkit-qt/vantkit.h>

//! [path.live]
/** A path bar that looks again what fits when it gets another size. */
class FittedPathBar : public VantButtonPath
{
public:
    explicit FittedPathBar(const QString& path)
        : m_path(path)
    {
        setAccessibleName("Folder");
        // A click only tells where the user wants to go.
        connect(this, &VantButtonPath::sigUpdatePath, this, &FittedPathBar::moveTo);
    }

    void moveTo(const QString& path)
    {
        m_path = path;
        refresh(path);
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        VantButtonPath::resizeEvent(event);
        refresh(m_path);
    }

private:
    QString m_path;
};

QWidget* createPathBar()
{
    return new FittedPathBar("Backup/Documents/Letters/2026");
}

//! [path.live]

//! [path.fit]
QWidget* createLongPathBar()
{
    // What does not fit goes into the menu of the button at the left.
    return new FittedPathBar("Backup/Documents/Projects/Archive/Letters/Contracts/Invoices/Drafts/2026");
}

//! [path.fit]

//! [path.odd]
QWidget* createOddPathBar()
{
    // A name is plain text: "&" marks no key, and only "/" parts two names.
    return new FittedPathBar("R&D/Q&A && FAQ/100 %/Draft  2");
}

//! [path.odd]
