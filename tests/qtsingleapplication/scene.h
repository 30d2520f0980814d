#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <map>

/** What the peers of all participants are known by. */
constexpr const char* sceneIdentity = "scene";

/**
 * Processes that act on one another as they are told, in a temporary folder of their own, which is also that
 * of this process meanwhile. What was wrong with them at their end is a warning.
 *
 * What they are told is written as steps, with "; " between them, such as
 *
 *     P0 write: true; Q0 write: false; P kill; Q0 write
 *
 * A step is the name of a process, which starts at its first step, and for a locked file its number, then a
 * command of participant.cpp, and the answer after the colon; without one it has to be "true". Warnings of
 * the process stand behind its answer, in brackets. Some steps are no commands:
 *
 *     P kill       does so, without giving it time to clean up
 *     P end        lets it end in order
 *     P waits      the command that P was told has not been answered yet
 *     P answers    waits for its answer
 *
 * With " becomes " instead of the colon the command is repeated until it is answered so.
 */
class Scene
{
public:
    Scene();
    ~Scene();

    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /** Empty if each step gave its answer, else the first that did not. */
    QString play(const QString& steps);

    void tell(const QString& name, const QString& command);
    QString answer(const QString& name);

    qint64 processId(const QString& name) { return process(name).processId(); }

    /** Of the local socket of the participants' peers. */
    QString socketPath() const;

private:
    QProcess& process(const QString& name);
    QString perform(const QString& name, const QString& command);
    QString end(const QString& name);

    QTemporaryDir folder;
    QByteArray formerFolder;
    std::map<QString, QProcess> processes;
};
