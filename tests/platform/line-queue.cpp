#include "line-queue.h"

#include <utility>

void LineQueue::push(std::string line)
{
    const std::lock_guard<std::mutex> guard(m_guard);
    m_lines.push_back(std::move(line));
    m_changed.notify_one();
}

void LineQueue::close()
{
    const std::lock_guard<std::mutex> guard(m_guard);
    m_closed = true;
    m_changed.notify_one();
}

std::optional<std::string> LineQueue::pop()
{
    std::unique_lock<std::mutex> guard(m_guard);
    m_changed.wait(guard, [this] { return m_closed || !m_lines.empty(); });
    return takeFirst();
}

std::optional<std::string> LineQueue::pop(std::chrono::milliseconds limit)
{
    std::unique_lock<std::mutex> guard(m_guard);
    m_changed.wait_for(guard, limit, [this] { return m_closed || !m_lines.empty(); });
    return takeFirst();
}

std::optional<std::string> LineQueue::takeFirst()
{
    if (m_lines.empty()) {
        return std::nullopt;
    }
    std::string line = std::move(m_lines.front());
    m_lines.pop_front();
    return line;
}

bool LineQueue::isEmpty() const
{
    const std::lock_guard<std::mutex> guard(m_guard);
    return m_lines.empty();
}
