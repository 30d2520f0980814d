#include "style-rules.h"

#include <algorithm>
#include <cmath>

namespace {

class Parser
{
public:
    std::vector<Rule> parse(const Section& section)
    {
        for (const TemplateLine& line : section.lines) {
            for (const QChar character : line.text + QLatin1Char('\n')) {
                take(character, line.place);
            }
        }
        if (!rule.text.isEmpty()) {
            rules.push_back(rule);
        }
        return rules;
    }

private:
    void take(QChar character, const Place& place)
    {
        if (rule.text.isEmpty()) {
            if (character.isSpace()) {
                return;
            }
            rule.place = place;
        }
        rule.text += character;
        if (character == QLatin1Char('{')) {
            rule.selector = part.simplified();
            part.clear();
        } else if (character == QLatin1Char(';') || character == QLatin1Char('}')) {
            addDeclaration();
            if (character == QLatin1Char('}')) {
                rules.push_back(rule);
                rule = {};
            }
        } else if (!part.isEmpty() || !character.isSpace()) {
            partPlace = part.isEmpty() ? place : partPlace;
            part += character;
        }
    }

    void addDeclaration()
    {
        if (!part.isEmpty()) {
            rule.declarations.push_back({ part.section(QLatin1Char(':'), 0, 0).trimmed(),
                part.section(QLatin1Char(':'), 1).trimmed(), partPlace });
        }
        part.clear();
    }

    std::vector<Rule> rules;
    Rule rule;
    QString part;
    Place partPlace;
};

double luminance(const QColor& colour)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

} // namespace

const Declaration* Rule::find(const QString& property) const
{
    const auto found = std::find_if(declarations.rbegin(), declarations.rend(),
        [&property](const Declaration& declaration) { return declaration.property == property; });
    return found == declarations.rend() ? nullptr : &*found;
}

QColor Rule::colour(const QString& property) const
{
    const Declaration* declaration = find(property);
    return declaration != nullptr && QColor::isValidColor(declaration->value) ? QColor(declaration->value)
                                                                              : QColor();
}

std::vector<Rule> rulesOf(const Section& section)
{
    return Parser().parse(section);
}

double contrast(const QColor& first, const QColor& second)
{
    const auto [darker, lighter] = std::minmax({ luminance(first), luminance(second) });
    return (lighter + 0.05) / (darker + 0.05);
}
