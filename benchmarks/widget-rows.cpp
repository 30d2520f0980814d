#include "bench.h"
#include "families.h"
#include "made-up-theme.h"

#include <vantkit-qt/image-manager/image-manager.h>
#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/widgets/vant-button.h>

#include <memory>

namespace bench {

namespace {

constexpr int buttonCount = 1000;
constexpr int turnCount = 50;
const char* const key = "component.apply_button";

using Buttons = std::vector<std::unique_ptr<QPushButton>>;

std::unique_ptr<QPushButton> vantButton(const QString& text)
{
    return std::make_unique<VantButton>(text, 0);
}

std::unique_ptr<QPushButton> buttonByHand(const QString& text)
{
    auto button = std::make_unique<QPushButton>(text);
    button->setFlat(true);
    button->setStyleSheet(getStyleSheet(key, false));
    return button;
}

using Make = std::unique_ptr<QPushButton> (*)(const QString& text);

double nanosecondsToAdd(Buttons& buttons, Make make)
{
    const QString text = QStringLiteral("Apply");
    return nanosecondsOf([&] {
        for (int count = 0; count < buttonCount / turnCount; ++count) {
            buttons.push_back(make(text));
        }
    });
}

// The two kinds in many short turns. The buttons live together, as they do in a window, and go after the
// clock is stopped.
Amounts buildBoth()
{
    Buttons buttons;
    buttons.reserve(std::size_t { 2 } * buttonCount);
    const Sampler turn = interleaved([&buttons] { return nanosecondsToAdd(buttons, vantButton); },
        [&buttons] { return nanosecondsToAdd(buttons, buttonByHand); });
    Amounts sum;
    for (int count = 0; count < turnCount; ++count) {
        const Amounts times = turn();
        sum.kit += times.kit;
        sum.alternative += times.alternative;
    }
    return sum;
}

Sampler buildButtons()
{
    const MadeUpTheme& theme = MadeUpTheme::current();
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(
        { MadeUpTheme::writeSection(theme.path(), QLatin1String(key), MadeUpTheme::styleSheet(700)) });
    const auto kit = vantButton(QStringLiteral("Apply"));
    const auto byHand = buttonByHand(QStringLiteral("Apply"));
    requireSameWork(!kit->styleSheet().isEmpty() && kit->styleSheet() == byHand->styleSheet()
        && kit->isFlat() == byHand->isFlat());
    return buildBoth;
}

} // namespace

void addWidgetRows(Suite& suite)
{
    suite.rows.push_back(
        { QStringLiteral("widgets.buttons"), QStringLiteral("1,000 buttons"), QStringLiteral("VantButton"),
            QStringLiteral("a flat QPushButton that fetches and sets the same sheet by hand"), 1.05, 51,
            buildButtons });
}

} // namespace bench
