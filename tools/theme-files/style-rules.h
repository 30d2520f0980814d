#pragma once

#include "template-text.h"

#include <QColor>

struct Declaration
{
    QString property;
    QString value;
    Place place;
};

/** A rule of a style sheet. What follows the last one is taken to be another. */
struct Rule
{
    QString selector;
    std::vector<Declaration> declarations;
    QString text;
    Place place;

    /** What the last declaration of @p property says; null if there is none. */
    const Declaration* find(const QString& property) const;

    /** The colour that @p property has; invalid if there is none. */
    QColor colour(const QString& property) const;
};

std::vector<Rule> rulesOf(const Section& section);

/** The contrast of two opaque colours by the Web Content Accessibility Guidelines, from 1 to 21. */
double contrast(const QColor& first, const QColor& second);
