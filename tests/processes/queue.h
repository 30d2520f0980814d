#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

/** Lines from one thread to another. Nothing in place of a line says that there are no more. */
class Queue
{
public:
    void push(const std::optional<std::string>& line)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_lines.push_back(line);
        m_changed.notify_one();
    }

    /** Nothing if no line comes in time, too. */
    std::optional<std::string> pop(std::chrono::milliseconds limit = std::chrono::hours(1))
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_changed.wait_for(lock, limit, [this] { return !m_lines.empty(); })) {
            return std::nullopt;
        }
        const std::optional<std::string> line = m_lines.front();
        m_lines.pop_front();
        return line;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::optional<std::string>> m_lines;
};
