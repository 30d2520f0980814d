#include "families.h"

namespace bench {

Suite wholeSuite()
{
    Suite suite;
    addImageRows(suite);
    addStyleRows(suite);
    addWidgetRows(suite);
    addSheetRows(suite);
    addPagingRows(suite);
    addTableRows(suite);
    addPathRows(suite);
    addDateRows(suite);
    addPeerRows(suite);
    addLockRows(suite);
    addTreeRows(suite);
    addHelpRows(suite);
#ifdef VANTKIT_BENCH_GALLERY
    addStartupRows(suite);
#endif
    return suite;
}

} // namespace bench
