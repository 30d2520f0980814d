#pragma once

#include "finding.h"

/** A line of a section, as it is after the comments are gone, and where it begins. */
struct TemplateLine
{
    QString text;
    Place place;
};

/** The style sheet of one key. */
struct Section
{
    QString key;
    Place header;
    std::vector<TemplateLine> lines;

    QString text() const;
};

struct Templates
{
    std::vector<Section> sections;
    Findings findings;
};

/**
 * Cuts the templates of the theme in @p folder into sections, by the rules of StyleManager, and tells what
 * gets lost on the way. The tokens for folders stay as they are.
 */
Templates readTemplates(const QString& folder);
