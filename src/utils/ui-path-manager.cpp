#include "utils/ui-path-manager.h"

#include "utils/debug-message.h"

UIPathManager& UIPathManager::getInstance()
{
    static UIPathManager instance;
    return instance;
}

void UIPathManager::setPath(const QString& key, const QString& path)
{
    const auto found = m_paths.find(key);
    if (found != m_paths.end()) {
        qCWarning(debug_message) << "Existing path is" << found->second << "with key" << key
                                 << "but overwrite it now";
    }
    m_paths[key] = path;
}

QString UIPathManager::getPath(const QString& key)
{
    const auto found = m_paths.find(key);
    if (found == m_paths.end()) {
        qCWarning(debug_message) << "Cannot find path by key" << key;
        return {};
    }
    return found->second;
}
