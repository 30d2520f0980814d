#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QUrl>

//! [labels.wrap]
QWidget* createWrappedLabel()
{
    auto* label = new VantLabel("Files that were removed from this computer are kept for thirty days. After "
                                "that time they are removed from the backup as well.");
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum); // never lower than its text
    return label;
}

//! [labels.wrap]

//! [labels.message]
QWidget* createMessage()
{
    auto* icon = new QLabel;
    icon->setPixmap(getGlobalImage("icon_warning"));
    auto* words = new MessageLabel; // exactly as high as its text
    words->setStyleSheet(getStyleSheet("component.message_sheet_text"));
    words->setWordWrap(true);
    words->setText("The target does not answer. The next attempt is at 22:00.");

    auto* message = new QWidget;
    auto* layout = new QHBoxLayout(message);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(words, 1);
    return message;
}

//! [labels.message]

//! [labels.link]
QWidget* createLink()
{
    auto* link = new LinkLabel("What is new");
    link->setForegroundRole(QPalette::Link);
    link->setHyperLink("https://example.org/news");
    const auto open = [link] { QDesktopServices::openUrl(QUrl(link->getHyperLink())); };
    QObject::connect(link, &LinkLabel::clicked, link, open);
    return link;
}

//! [labels.link]
