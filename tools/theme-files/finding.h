#pragma once

#include <QString>

#include <vector>

/** A line of one of a theme's files. */
struct Place
{
    QString file; ///< relative to the theme's folder
    int line = 0; ///< from 1; 0 is the file as a whole
};

/** Something wrong with a theme. */
struct Finding
{
    enum Weight {
        Flaw, ///< some part of the look is missing, or not as it was meant
        Broken, ///< the text of a file ends in the middle, or Qt cannot parse it
        Unreadable ///< a file that the kit does not start without cannot be read
    };

    Place place;
    QString text;
    Weight weight = Flaw;
};

using Findings = std::vector<Finding>;
