#pragma once

#include "bench.h"

namespace bench {

/** A table for a terminal, a line per result. */
QString tableHead();
QString tableRow(const Result& result);

/** The results as a table in Markdown, with what each row compares. */
QString markdown(const std::vector<Result>& results);

QByteArray json(const std::vector<Result>& results);

/** What each row compares. */
QString list(const std::vector<Row>& rows);

} // namespace bench
