# Plants violations in a small source tree in SCRATCH_DIR, and expects CHECK to name them all.

cmake_minimum_required(VERSION 3.25)

function(write_clean_tree)
    file(REMOVE_RECURSE ${SCRATCH_DIR})
    file(WRITE ${SCRATCH_DIR}/vantkit.h "#include \"utils/path.h\"\n#include \"widgets/button.h\"\n")
    file(WRITE ${SCRATCH_DIR}/utils/path.h "#include \"vantkit-export.h\"\n#include <QString>\n")
    file(WRITE ${SCRATCH_DIR}/utils/path_p.h "#include \"utils/path.h\"\n")
    file(WRITE ${SCRATCH_DIR}/platform/system.cpp "#ifdef Q_OS_WIN\n#include <windows.h>\n#endif\n")
    file(WRITE ${SCRATCH_DIR}/widgets/button.h "#include <QPushButton>\n#ifdef QT_VERSION\n#endif\n")
    file(WRITE ${SCRATCH_DIR}/views/cell_p.h "#include \"utils/path.h\"\n")
    file(WRITE ${SCRATCH_DIR}/widgets/button.cpp
        "#include \"widgets/button.h\"\n#include \"utils/path_p.h\"\n#include \"moc_button.cpp\"\n")
endfunction()

function(check exit_code output)
    execute_process(COMMAND ${CMAKE_COMMAND} -D SOURCE_DIR=${SCRATCH_DIR} -P ${CHECK}
        RESULT_VARIABLE result ERROR_VARIABLE text)
    set(${exit_code} ${result} PARENT_SCOPE)
    set(${output} "${text}" PARENT_SCOPE)
endfunction()

write_clean_tree()
check(exit_code output)
if(NOT exit_code EQUAL 0 OR output)
    message(SEND_ERROR "A clean tree gave ${exit_code}:\n${output}")
endif()

# File|line|complaint.
set(violations
    "utils/path.h|#include \"widgets/button.h\"|includes widgets/button.h, and widgets does not lie below utils"
    "platform/system.cpp|  #  include  \"utils/path.h\"  // why not|includes utils/path.h, and utils"
    "widgets/button.cpp|#include \"button.h\"|includes \"button.h\", which is no path"
    "widgets/button.cpp|#include \"vantkit.h\"|includes vantkit.h, which is for users"
    "widgets/button.h|#include \"utils/path_p.h\"|is public, and includes the private utils/path_p.h"
    "vantkit.h|#include \"utils/path_p.h\"|includes utils/path_p.h, which is no public header"
    "widgets/label.h|#include <QLabel>|"
    "widgets/button.cpp|# if defined(_WIN32)|depends on the system outside of platform/: # if defined(_WIN32)"
    "widgets/button.cpp|#include <unistd.h>|depends on the system outside of platform/: #include <unistd.h>"
    "widgets/close_x11.cpp||is named after a system"
    "toys/toy.cpp||lies in no layer")
foreach(violation IN LISTS violations)
    string(REGEX MATCH "^(.*)\\|(.*)\\|(.*)$" matched "${violation}")
    file(APPEND ${SCRATCH_DIR}/${CMAKE_MATCH_1} "${CMAKE_MATCH_2}\n")
endforeach()
check(exit_code output)
foreach(violation IN LISTS violations)
    string(REGEX REPLACE "\\|.*\\|" ": " complaint "${violation}")
    string(REPLACE "widgets/label.h: " "vantkit.h: does not include widgets/label.h" complaint "${complaint}")
    string(FIND "${output}" "${complaint}" position)
    if(exit_code EQUAL 0 OR position EQUAL -1)
        message(SEND_ERROR "'${complaint}' is missing; the check gave ${exit_code}:\n${output}")
    endif()
endforeach()
