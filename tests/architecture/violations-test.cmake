# Plants violations in a small source tree in SCRATCH_DIR, and expects CHECK to name them all.

cmake_minimum_required(VERSION 3.25)

# File|line|complaint, if it is a violation.
set(violations
    "utils/path_p.h|#include \"vantkit-export.h\"|"
    "platform/system.cpp|#ifdef Q_OS_WIN|"
    "utils/path.h|#include \"widgets/button.h\"|includes widgets/button.h, and widgets does not lie below utils"
    "platform/system.cpp|  #  include  \"utils/path.h\"  // why not|includes utils/path.h, and utils"
    "widgets/button.cpp|#include \"button.h\"|includes \"button.h\", which is no path"
    "widgets/button.cpp|#include \"vantkit.h\"|includes vantkit.h, which is for users"
    "widgets/button.h|#include \"utils/path_p.h\"|is public, and includes the private utils/path_p.h"
    "vantkit.h|#include \"utils/path_p.h\"|includes utils/path_p.h, which is no public header"
    "widgets/button.cpp|# if defined(_WIN32)|depends on the system outside of platform/: # if defined(_WIN32)"
    "widgets/button.cpp|#include <unistd.h>|depends on the system outside of platform/: #include <unistd.h>"
    "widgets/close_x11.cpp||is named after a system"
    "toys/toy.cpp||lies in no layer")
file(REMOVE_RECURSE ${SCRATCH_DIR})
foreach(violation IN LISTS violations)
    string(REGEX MATCH "^(.*)\\|(.*)\\|(.*)$" matched "${violation}")
    file(APPEND ${SCRATCH_DIR}/${CMAKE_MATCH_1} "${CMAKE_MATCH_2}\n")
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} -D SOURCE_DIR=${SCRATCH_DIR} -P ${CHECK} RESULT_VARIABLE result ERROR_VARIABLE output)
foreach(violation IN LISTS violations)
    string(REGEX REPLACE "\\|.*\\|" ": " complaint "${violation}")
    string(FIND "${output}" "${complaint}" position)
    if(result EQUAL 0 OR (position EQUAL -1 AND NOT violation MATCHES "\\|$"))
        message(SEND_ERROR "'${complaint}' is missing; the check gave ${result}:\n${output}")
    endif()
endforeach()
if(NOT output MATCHES "vantkit.h: does not include widgets/button.h" OR output MATCHES "vantkit-export|Q_OS_WIN")
    message(SEND_ERROR "A public header that vantkit.h lacks, or what is right, gave:\n${output}")
endif()
