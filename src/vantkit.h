#pragma once

// Every public header of the kit.

#include "image-manager/image-manager.h"
#include "style-manager/style-manager.h"
#include "utils/component-strings.h"
#include "utils/debug-message.h"
#include "utils/dpi-info.h"
#include "utils/ui-path-manager.h"
#include "widgets/link-label.h"
#include "widgets/message-label.h"
#include "widgets/mouse-filters.h"
#include "widgets/vant-button.h"
#include "widgets/vant-check-box.h"
#include "widgets/vant-combo-box.h"
#include "widgets/vant-footbar.h"
#include "widgets/vant-icon-button.h"
#include "widgets/vant-label.h"
#include "widgets/vant-menu.h"
#include "widgets/vant-radio-button.h"
