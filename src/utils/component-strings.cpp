#include "utils/component-strings.h"

#include "utils/debug-message.h"

ComponentStrings& ComponentStrings::getInstance()
{
    static ComponentStrings instance;
    return instance;
}

void ComponentStrings::installStrings(const QMap<QString, QString>& strings)
{
    m_strings = strings;
}

QString ComponentStrings::getString(const QString& key)
{
    const auto found = m_strings.constFind(key);
    if (found == m_strings.constEnd()) {
        qCWarning(debug_message) << "Cannot find key in ComponentStrings" << key;
        return key;
    }
    return *found;
}
