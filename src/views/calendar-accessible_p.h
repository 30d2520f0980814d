#pragma once

namespace vantkit::internal {

/** Lets screen readers find what is inside a calendar view. Further calls do nothing. */
void installCalendarAccessibility();

} // namespace vantkit::internal
