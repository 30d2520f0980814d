#pragma once

#include <QString>

#include <stdexcept>

/** The library did not do what it promises. */
class Failure : public std::runtime_error
{
public:
    explicit Failure(const QString& reason)
        : std::runtime_error(reason.toStdString())
    { }
};

inline void demand(bool holds, const QString& otherwise)
{
    if (!holds) {
        throw Failure(otherwise);
    }
}
