#pragma once

#include "processes/scene-identity.h"
#include "processes/scene.h"

/** A Scene in Qt's words. */
class KitScene : private Scene
{
public:
    QString play(const QString& steps) { return QString::fromStdString(Scene::play(steps.toStdString())); }

    void tell(const char* name, const QString& line) { Scene::tell(name, line.toStdString()); }

    QString answer(const char* name) { return QString::fromStdString(Scene::answer(name)); }

    /** Of the participants' peers, once there is one. */
    static QString socketName()
    {
        return QDir::temp().entryList({ "*-lockfile" }).value(0).section("-lockfile", 0, 0);
    }
};
