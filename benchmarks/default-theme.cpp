#include "default-theme.h"

#include "bench.h"

#include <vantkit-qt/theme/vant-theme.h>

#include <QTemporaryDir>

namespace bench {

void useDefaultTheme()
{
    static const QTemporaryDir userData; // for the temporary images of this process
    const VantTheme theme = VantTheme::of(QStringLiteral("default"));
    if (!theme.start(userData.path(), QStringLiteral("enu"))) {
        throw Failure(QStringLiteral("there is no default theme in ") + theme.folder());
    }
}

} // namespace bench
