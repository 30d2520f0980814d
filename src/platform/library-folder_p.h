#pragma once

#include <QString>

namespace vantkit::internal {

/** The folder of the file that this library was loaded from; empty if the system does not tell. */
QString libraryFolder();

} // namespace vantkit::internal
