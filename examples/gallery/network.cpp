#include "network.h"

#include <QNetworkProxyFactory>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace gallery {

void useSystemProxies()
{
    QNetworkProxyFactory::setUseSystemConfiguration(true);
}

bool hasCertificate(const QString& file)
{
    return !QSslCertificate::fromPath(file).isEmpty();
}

void trustAsWell(const QString& file)
{
    // With certificates of its own, a configuration no longer looks for the system's by itself.
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(
        QSslConfiguration::systemCaCertificates() + QSslCertificate::fromPath(file));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace gallery
