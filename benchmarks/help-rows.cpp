#include "bench.h"
#include "child-process.h"
#include "families.h"

#include <vantkit-qt/help/html-text-browser.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <memory>

namespace bench {

namespace {

const QString setTextSampler = QStringLiteral("help-set-text");
const QString scanSampler = QStringLiteral("help-scan");

constexpr int megabyte = 1000000;
constexpr int fewImages = 1000;
constexpr int manyImages = 10000;

const QString paragraph = QStringLiteral("<p>One paragraph of help, with <b>bold</b> words in it.</p>\n");

// The folder for the images, which is made even though no image comes.
std::shared_ptr<QTemporaryDir> useTemporaryFolder()
{
    auto folder = std::make_shared<QTemporaryDir>();
    qputenv("TMPDIR", folder->path().toLocal8Bit());
    return folder;
}

Sampler setText()
{
    const auto text =
        std::make_shared<QString>("<html>" + paragraph.repeated(megabyte / paragraph.size()) + "</html>");
    const auto kit = std::make_shared<HtmlTextBrowser>();
    const auto plain = std::make_shared<QTextBrowser>();
    const Sampler sampler =
        interleaved(repeated([=] { kit->setText(*text); }), repeated([=] { plain->setHtml(*text); }));
    requireSameWork(kit->toPlainText() == plain->toPlainText());
    return sampler;
}

/** A browser that counts the downloads that have ended. */
class Browser : public HtmlTextBrowser
{
public:
    void reload() override
    {
        HtmlTextBrowser::reload();
        ++m_ended;
    }

    void show(const QString& text, int count)
    {
        m_ended = 0;
        setText(text);
        while (m_ended < count) {
            QCoreApplication::processEvents();
        }
    }

private:
    int m_ended = 0;
};

// A base address that leads nowhere: what is measured is the kit, and no network.
QString pageWithImages(int megabytes, int images)
{
    const int perImage = megabytes * megabyte / images / paragraph.size();
    QString text = QStringLiteral("<html><base href=\"nowhere://\">");
    for (int i = 0; i < images; ++i) {
        text += paragraph.repeated(perImage) + QStringLiteral("<img src=\"%1.png\">").arg(i);
    }
    return text + "</html>";
}

Sampler scan()
{
    const auto folder = useTemporaryFolder();
    const auto shortPage = std::make_shared<QString>(pageWithImages(1, fewImages));
    const auto longPage = std::make_shared<QString>(pageWithImages(10, manyImages));
    const auto browser = std::make_shared<Browser>();
    return interleaved(repeated([=] {
        browser->show(*longPage, manyImages);
        Q_UNUSED(folder)
    }),
        repeated([=] { browser->show(*shortPage, fewImages); }));
}

} // namespace

void addHelpRows(Suite& suite)
{
    suite.samplers[setTextSampler] = setText;
    suite.samplers[scanSampler] = scan;
    suite.rows.push_back({ QStringLiteral("help.set-text"), QStringLiteral("one page of 1 MB without images"),
        QStringLiteral("HtmlTextBrowser::setText"), QStringLiteral("QTextBrowser::setHtml"), 1.1, 15,
        [] { return samplerInChild(setTextSampler, offscreen()); } });
    suite.rows.push_back(
        { QStringLiteral("help.scan"), QStringLiteral("one page set, and the end of all its downloads"),
            QStringLiteral("HtmlTextBrowser::setText with 10 MB and 10,000 images"),
            QStringLiteral("HtmlTextBrowser::setText with 1 MB and 1,000 images"), 12.0, 9,
            [] { return samplerInChild(scanSampler, offscreen()); } });
}

} // namespace bench
