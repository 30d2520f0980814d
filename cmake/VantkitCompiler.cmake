# Warnings, sanitizers and link rules that every target of the kit shares.

include_guard(GLOBAL)

add_library(vantkit_compiler INTERFACE)

if(MSVC)
    set(vantkit_warnings /W4 /utf-8 $<$<BOOL:${VANTKIT_WARNINGS_AS_ERRORS}>:/WX>)
else()
    set(vantkit_warnings
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
        $<$<BOOL:${VANTKIT_WARNINGS_AS_ERRORS}>:-Werror>)
endif()
# The compiler of resources for Windows knows none of them.
target_compile_options(vantkit_compiler INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${vantkit_warnings}>")

target_compile_definitions(vantkit_compiler INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(VANTKIT_SANITIZE)
    # The whole tree, so that every program agrees with the library it loads.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# The sanitizers' own symbols are resolved when the program starts, so their build alone may leave some open.
if(NOT MSVC AND NOT APPLE AND NOT VANTKIT_SANITIZE)
    add_link_options(LINKER:--no-undefined)
endif()
