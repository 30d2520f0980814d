#pragma once

#include "vantkit-export.h"

#include <QObject>

/** @file
 * Filters for QObject::installEventFilter(), which does not take them over: give each a parent.
 */

/** An event filter that swallows presses, releases and double clicks of mouse buttons. */
class VANTKIT_EXPORT MouseButtonFilter : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/** An event filter that swallows releases of mouse buttons only. */
class VANTKIT_EXPORT MouseReleaseFilter : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
