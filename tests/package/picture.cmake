# MINIMAL and BACKUP, built from the installed kit, draw their pictures and have nothing to complain about. BACKUP shows the
# files of FOLDER.

cmake_minimum_required(VERSION 3.25)

function(draw program)
    set(picture ${program}.png)
    file(REMOVE ${picture})
    execute_process(COMMAND ${program} ${ARGN} ${picture} RESULT_VARIABLE exit_code ERROR_VARIABLE complaints)
    string(REGEX REPLACE "This plugin does not support [^\n]*\n" "" complaints "${complaints}")
    if(NOT exit_code EQUAL 0 OR complaints OR NOT EXISTS ${picture})
        message(FATAL_ERROR "${program} ended with ${exit_code} and wrote:\n${complaints}")
    endif()
endfunction()

draw(${MINIMAL})
draw(${BACKUP} ${FOLDER} ${FOLDER})
