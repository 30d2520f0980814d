#include "help/browser-window.h"

#include "help/html-text-browser.h"
#include "help/receive-replies_p.h"
#include "style-manager/style-manager.h"
#include "utils/text-decoding_p.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QVBoxLayout>

BrowserWindow::BrowserWindow(QWidget* parent)
    : QDialog(parent)
    , textBrowser(new HtmlTextBrowser(this))
{
    textBrowser->setOpenExternalLinks(true);
    textBrowser->setOpenLinks(false); // each click is decided in one place
    connect(textBrowser, SIGNAL(anchorClicked(QUrl)), textBrowser, SLOT(followLink(QUrl)));
    init();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(textBrowser);
    setWindowModality(Qt::ApplicationModal);
    // Under a parent with a style sheet, scroll bars that have had their first look would keep it.
    ensurePolished();
    setStyleSheet(getStyleSheet("component.scrollbar", false));
}

BrowserWindow::~BrowserWindow()
{
    delete networkManager; // and the replies that still run with it
    delete queryTimer;
}

void BrowserWindow::init()
{
    if (networkManager) {
        return;
    }
    networkManager = new QNetworkAccessManager; // goes in the destructor
    vantkit::internal::receiveReplies(networkManager, this, SLOT(slotReceiveReply(QNetworkReply*)));
    queryTimer = new QTimer; // goes in the destructor
    queryTimer->setSingleShot(true);
    connect(queryTimer, SIGNAL(timeout()), this, SLOT(slotQueryTimeout()));
}

void BrowserWindow::query()
{
    queryTimer->start(10000);
    QNetworkReply* reply = networkManager->get(QNetworkRequest(url)); // goes when it has been received
    connect(this, SIGNAL(sigAbortRequest()), reply, SLOT(abort()));
}

void BrowserWindow::reload()
{
    query();
}

void BrowserWindow::reload(const QUrl& address)
{
    url = address;
    reload();
}

void BrowserWindow::fallbackOffline() { }

void BrowserWindow::slotReceiveReply(QNetworkReply* reply)
{
    queryTimer->stop();
    reply->deleteLater();
    if (reply->error() == QNetworkReply::NoError) {
        textBrowser->setText(vantkit::internal::textUpToNul(reply->readAll()));
    } else {
        fallbackOffline();
    }
}

void BrowserWindow::slotQueryTimeout()
{
    Q_EMIT sigAbortRequest();
}
