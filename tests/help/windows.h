#pragma once

#include <vantkit-qt/help/help-window.h>
#include <vantkit-qt/help/html-text-browser.h>

#include <QFile>
#include <QImage>
#include <QSignalSpy>

inline void setTemporaryFolder(const QString& path)
{
    for (const char* variable : { "TMPDIR", "TMP" }) { // of Unix, and of Windows
        qputenv(variable, QFile::encodeName(path));
    }
}

/** The rectangle on @p widget that @p color covers, or all else but that colour. */
inline QRect areaOf(const QColor& color, QWidget* widget, bool isCovered = true)
{
    const QImage image = widget->grab().toImage();
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((image.pixelColor(x, y) == color) == isCovered) {
                area |= QRect(x, y, 1, 1);
            }
        }
    }
    return area;
}

class Browser : public HtmlTextBrowser
{
public:
    Browser()
    {
        resize(400, 500);
        show();
    }

    void reload() override
    {
        HtmlTextBrowser::reload();
        ++reloads;
    }

    using HtmlTextBrowser::slotDownloadFinished;

    QRect area(const QColor& color, bool isCovered = true) { return areaOf(color, viewport(), isCovered); }

    int reloads = 0;
};

template <typename Base>
struct Window : Base
{
    using Base::Base;
    using Base::textBrowser;

    void fallbackOffline() override
    {
        Base::fallbackOffline();
        ++fallbacks;
    }

    QString text() const { return textBrowser->toPlainText(); }

    int fallbacks = 0;
    QSignalSpy aborts { this, &BrowserWindow::sigAbortRequest };
};
