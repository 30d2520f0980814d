#pragma once

class VantButton;

namespace vantkit::internal {

/**
 * Lets screen readers meet the buttons of the filter bar and of the paging bar as they are to the user who
 * sees them: the one in a field goes by the name of the field, and a page button that stands for no page is
 * not there. Further calls do nothing.
 */
void installBarButtonAccessibility();

/** Whether the page button has the number of a page on it. */
bool standsForPage(const VantButton* pageButton);

} // namespace vantkit::internal
