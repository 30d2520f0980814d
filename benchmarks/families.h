#pragma once

#include "bench.h"

namespace bench {

void addImageRows(Suite& suite);
void addStyleRows(Suite& suite);
void addWidgetRows(Suite& suite);
void addSheetRows(Suite& suite);
void addPagingRows(Suite& suite);
void addTableRows(Suite& suite);
void addPathRows(Suite& suite);
void addDateRows(Suite& suite);
void addPeerRows(Suite& suite);
void addLockRows(Suite& suite);
void addTreeRows(Suite& suite);
void addHelpRows(Suite& suite);
#ifdef VANTKIT_BENCH_GALLERY
void addStartupRows(Suite& suite);
#endif

/** The rows of all families. */
Suite wholeSuite();

} // namespace bench
