#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

/** Lines from one thread to another. */
class LineQueue
{
public:
    void push(std::string line);

    /** No line follows. */
    void close();

    /** The next line, as soon as there is one; nothing when none will follow. */
    std::optional<std::string> pop();

    /** The same, and nothing too when the time is up. */
    std::optional<std::string> pop(std::chrono::milliseconds limit);

    bool isEmpty() const;

private:
    std::optional<std::string> takeFirst();

    mutable std::mutex m_guard;
    std::condition_variable m_changed;
    std::deque<std::string> m_lines;
    bool m_closed = false;
};
