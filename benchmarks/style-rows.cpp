#include "bench.h"
#include "child-process.h"
#include "families.h"
#include "made-up-theme.h"

#include <vantkit-qt/image-manager/image-manager.h>
#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/utils/dpi-info.h>

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QRegExp>
#include <QTemporaryDir>

#include <memory>

namespace bench {

namespace {

const QString key = QStringLiteral("component.two_kilobytes");
const QString templatesChild = QStringLiteral("templates");

void initializeSection()
{
    const MadeUpTheme& theme = MadeUpTheme::current();
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(
        { MadeUpTheme::writeSection(theme.path(), key, MadeUpTheme::styleSheet(2048)) });
}

QString scaledByHand(const QString& text, double dpi)
{
    QRegExp number(QStringLiteral("(\\d+\\.?\\d*)(px)"));
    QString scaled;
    scaled.reserve(text.size());
    int copied = 0;
    for (int at = number.indexIn(text); at != -1; at = number.indexIn(text, copied)) {
        scaled += text.midRef(copied, at - copied);
        scaled += QString::number(static_cast<int>(number.cap(1).toDouble() * dpi)) + QStringLiteral("px");
        copied = at + number.matchedLength();
    }
    scaled += text.midRef(copied);
    return scaled;
}

Sampler scaleSection()
{
    initializeSection();
    const QString text = getStyleSheet(key, true);
    const double dpi = DPIinfo::getInstance().getDPI();
    requireSameWork(getStyleSheet(key, false) == scaledByHand(text, dpi));
    return interleaved(repeated([] { const QString scaled = getStyleSheet(key, false); }),
        repeated([text, dpi] { const QString scaled = scaledByHand(text, dpi); }));
}

Sampler shareOfSetting()
{
    initializeSection();
    const auto window = std::make_shared<QWidget>();
    auto* const button = new QPushButton(QStringLiteral("Apply"), window.get());
    window->resize(400, 300);
    window->show();
    QApplication::processEvents();
    return [window, button] {
        button->setStyleSheet({});
        QString scaled;
        Amounts times;
        times.kit = nanosecondsOf([&] { scaled = getStyleSheet(key, false); });
        times.alternative = nanosecondsOf([&] { button->setStyleSheet(scaled); });
        return times;
    };
}

ChildResult initializeTemplates(const QString& file)
{
    MadeUpTheme::makeCurrent(QFileInfo(file).path());
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    const double nanoseconds = nanosecondsOf([&file] { StyleManager::getInstance().initialize({ file }); });
    return { nanoseconds, getStyleSheet("component.section_0", true) };
}

Sampler growthOfTemplates()
{
    const auto folder = std::make_shared<QTemporaryDir>();
    const QString few = MadeUpTheme::writeTemplates(folder->path(), 500);
    const QString many = MadeUpTheme::writeTemplates(folder->path(), 5000);
    requireSameWork(runChild(templatesChild, few).check == runChild(templatesChild, many).check);
    const auto inFreshProcess = [folder](const QString& file) {
        return [folder, file] { return runChild(templatesChild, file).amount; };
    };
    return interleaved(inFreshProcess(many), inFreshProcess(few));
}

} // namespace

void addStyleRows(Suite& suite)
{
    suite.children[templatesChild] = initializeTemplates;

    suite.rows.push_back({ QStringLiteral("styles.scale"), QStringLiteral("one section of 2 KB"),
        QStringLiteral("getStyleSheet(key, false)"), QStringLiteral("a bare QRegExp loop over the same text"),
        0.2, 501, scaleSection });
    suite.rows.push_back({ QStringLiteral("styles.scale-share"), QStringLiteral("one section of 2 KB"),
        QStringLiteral("getStyleSheet(key, false)"),
        QStringLiteral("the setStyleSheet of a shown button that follows"), std::nullopt, 501,
        shareOfSetting });
    suite.rows.push_back({ QStringLiteral("styles.initialize-growth"),
        QStringLiteral("one file of templates"), QStringLiteral("StyleManager::initialize of 5,000 sections"),
        QStringLiteral("the same of 500 sections"), 16, 21, growthOfTemplates });
}

} // namespace bench
