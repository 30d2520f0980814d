#pragma once

#include "processes/scene.h"

#include <QString>

/** What the peers of all participants are known by. */
constexpr const char* sceneIdentity = "scene";

/** A Scene in Qt's words. */
class KitScene : private Scene
{
public:
    QString play(const QString& steps) { return QString::fromStdString(Scene::play(steps.toStdString())); }

    void tell(const char* name, const QString& line) { Scene::tell(name, line.toStdString()); }

    QString answer(const char* name) { return QString::fromStdString(Scene::answer(name)); }

    QString ask(const char* name, const char* line) { return QString::fromStdString(Scene::ask(name, line)); }

    QString socketPath() const { return QString::fromStdString(Scene::socketPath()); }
};
