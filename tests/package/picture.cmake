# PROGRAM, built from the installed kit, draws the picture that REFERENCE draws, and has nothing to complain about.

cmake_minimum_required(VERSION 3.25)

function(take_picture program result)
    set(picture ${program}.png)
    file(REMOVE ${picture})
    execute_process(COMMAND ${program} ${picture} RESULT_VARIABLE exit_code ERROR_VARIABLE complaints)
    string(REGEX REPLACE "This plugin does not support [^\n]*\n" "" complaints "${complaints}")
    if(NOT exit_code EQUAL 0 OR complaints)
        message(FATAL_ERROR "${program} ended with ${exit_code} and wrote:\n${complaints}")
    endif()
    file(SHA256 ${picture} hash)
    set(${result} ${hash} PARENT_SCOPE)
endfunction()

take_picture(${REFERENCE} expected)
take_picture(${PROGRAM} hash)
if(NOT hash STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM}.png differs from ${REFERENCE}.png")
endif()
