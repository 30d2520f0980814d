#pragma once

#include "vantkit-export.h"

#include <QDialog>
#include <QUrl>

class HtmlTextBrowser;
class QNetworkAccessManager;
class QNetworkReply;
class QTimer;

/**
 * A dialog, modal to the application, that fetches one page from the web and shows it. Style key
 * "component.scrollbar".
 *
 * The page has 10000 ms to come. Every failure is the same to the window: a refused connection, an answer
 * with an error status, a bad certificate, a page that takes too long. It then calls fallbackOffline(), once
 * for each request that failed, and says nothing. A redirect is not followed; its own body is what shows.
 * What the window shows stays until an answer or the fall-back replaces it.
 *
 * HtmlTextBrowser::followLink() decides on each click: web and mail addresses go to the system, pages on
 * disk show in the window, and all else does nothing. Title and size are the application's to set.
 */
class VANTKIT_EXPORT BrowserWindow : public QDialog
{
    Q_OBJECT

public:
    /** An empty window, which asks for nothing until reload(). */
    explicit BrowserWindow(QWidget* parent = nullptr);

    /** Requests that still run end with the window, without a fall-back. */
    ~BrowserWindow() override;

    /** Makes what the requests need. The constructor has done so, and once is enough. */
    void init();

    /** Starts one request for the URL, and the time that it has. */
    void query();

    /**
     * Asks for the same URL again. A request that still runs goes on: what is answered last is what shows,
     * and the first answer ends the time limit of both. An empty URL fails like any other.
     */
    void reload();

    /** Asks for @p address from now on. */
    void reload(const QUrl& address);

    /** A request has failed. Does nothing here; a derived class shows something else. */
    virtual void fallbackOffline();

Q_SIGNALS:
    /** Every request of this window that still runs is to end, as a failed one. Anyone may emit it. */
    void sigAbortRequest();

private Q_SLOTS:
    void slotReceiveReply(QNetworkReply* reply);
    void slotQueryTimeout();

protected:
    QUrl url; ///< what query() asks for

private:
    QNetworkAccessManager* networkManager = nullptr;
    QTimer* queryTimer = nullptr;

protected:
    HtmlTextBrowser* textBrowser; ///< the whole content of the window, which owns it
};
