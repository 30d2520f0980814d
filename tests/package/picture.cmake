# PROGRAM, built from the installed kit, draws its picture and has nothing to complain about.

cmake_minimum_required(VERSION 3.25)

file(REMOVE ${PROGRAM}.png)
execute_process(COMMAND ${PROGRAM} ${PROGRAM}.png RESULT_VARIABLE exit_code ERROR_VARIABLE complaints)
string(REGEX REPLACE "This plugin does not support [^\n]*\n" "" complaints "${complaints}")
if(NOT exit_code EQUAL 0 OR complaints OR NOT EXISTS ${PROGRAM}.png)
    message(FATAL_ERROR "${PROGRAM} ended with ${exit_code} and wrote:\n${complaints}")
endif()
