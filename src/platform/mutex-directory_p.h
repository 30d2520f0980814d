#pragma once

#include "platform/file-descriptor_p.h"

#include <string>

namespace vantkit::internal {

/**
 * The private folder that the files of the mutexes lie in. It is used only while it is a folder and no link,
 * the user's own and closed to everybody else; what lies at its path otherwise is left alone.
 */
class MutexDirectory
{
public:
    explicit MutexDirectory(std::string path);

    /**
     * The one of this process: the system's own folder for what runs as this user, and a folder of the kit in
     * the temporary folder where there is none. No variable of the environment has a say, since two processes
     * that see different ones have to meet.
     */
    static const MutexDirectory& ofUser();

    const std::string& path() const { return m_path; }

    enum class State { Usable, Missing, Unusable };
    /** A quick look, for what needs no more than that. */
    State state() const;

    /** Not open on failure, with errno set. */
    FileDescriptor open() const;
    /** The same after it was made, if it does not exist yet. */
    FileDescriptor create() const;

private:
    std::string m_path;
};

} // namespace vantkit::internal
