#pragma once

namespace bench {

/**
 * Makes the theme that the kit comes with, in English, the one of this process. Once per process, and not
 * beside the made-up one: for what runs in a process of its own.
 */
void useDefaultTheme();

} // namespace bench
