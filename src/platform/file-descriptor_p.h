#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace vantkit::internal {

/** An open file that is closed with this object, which leaves errno as it is. */
class FileDescriptor
{
public:
    explicit FileDescriptor(int number = -1)
        : m_number(number)
    { }

    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    { }

    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    ~FileDescriptor()
    {
        if (isOpen()) {
            const int reason = errno;
            close(m_number);
            errno = reason;
        }
    }

    bool isOpen() const { return m_number >= 0; }

    int number() const { return m_number; }

private:
    int m_number;
};

} // namespace vantkit::internal
