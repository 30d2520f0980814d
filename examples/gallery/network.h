#pragma once

#include <QString>

namespace gallery {

/**
 * Has requests take the way to the web that the system's settings say: on Linux
 * https_proxy, on Windows its own.
 */
void useSystemProxies();

/** Whether there is a certificate in the PEM file @p file. */
bool hasCertificate(const QString& file);

/** Has every request trust the certificates in the PEM file @p file, besides those that the system trusts. */
void trustAsWell(const QString& file);

} // namespace gallery
