#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

/** Lines from one thread to another. */
class Queue
{
public:
    void push(const std::string& line)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_lines.push_back(line);
        m_changed.notify_one();
    }

    /** No more lines will come. */
    void close()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_isClosed = true;
        m_changed.notify_one();
    }

    /** The next line; nothing if none comes in time, or none is left. */
    std::optional<std::string> pop(std::chrono::milliseconds limit = std::chrono::hours(1))
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait_for(lock, limit, [this] { return m_isClosed || !m_lines.empty(); });
        if (m_lines.empty()) {
            return std::nullopt;
        }
        const std::string line = m_lines.front();
        m_lines.pop_front();
        return line;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::string> m_lines;
    bool m_isClosed = false;
};
