#pragma once

namespace vantkit::internal {

/** Lets screen readers see a sheet as the dialog that it is to its user. Further calls do nothing. */
void installSheetAccessibility();

} // namespace vantkit::internal
