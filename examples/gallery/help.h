#pragma once

#include <vantkit-qt/help/help-window.h>

#include <QTimer>

namespace gallery {

/**
 * The help for one page of the gallery. It goes when it is closed.
 *
 * Not every page has help of its own, nor is help written in every language of the gallery: an overview and
 * English stand in.
 */
class Help : public HelpWindow
{
    Q_OBJECT

public:
    Help(const QString& page, const QString& language, QWidget* parent);

    void fallbackOffline() override;

    /** Whether a page has come, from where ever, or will not. */
    bool isAnswered() const { return m_isAnswered; }

private:
    void dress();
    void takeAnswer();
    void askForPatience();

    QTimer m_patience;
    bool m_isAnswered = false;
};

} // namespace gallery
