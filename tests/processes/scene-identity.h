#pragma once

#include <QDir>

/**
 * What the peers in a scene's folder are known by. Elsewhere it is another: Windows has one folder of
 * sockets.
 */
inline QString sceneIdentity()
{
    return QDir::temp().dirName();
}
