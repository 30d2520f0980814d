# Compiles SOURCE to PROGRAM with what pkg-config says of the kit, and nothing more.

cmake_minimum_required(VERSION 3.25)

set(ENV{PKG_CONFIG_PATH} ${PKG_CONFIG_PATH})

function(ask_pkg_config variable)
    execute_process(COMMAND pkg-config ${ARGN} vantkit-qt
        OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(answer UNIX_COMMAND "${answer}")
    set(${variable} ${answer} PARENT_SCOPE)
endfunction()

ask_pkg_config(cflags --cflags)
ask_pkg_config(libs --libs)
ask_pkg_config(libdir --variable=libdir)
ask_pkg_config(themes_dir --variable=themesdir)

get_filename_component(program_dir ${PROGRAM} DIRECTORY)
file(MAKE_DIRECTORY ${program_dir})
execute_process(
    COMMAND ${COMPILER} -std=c++17 -fPIC "-DTHEME_FOLDER=\"${themes_dir}/default\"" ${cflags} ${SOURCE}
        -o ${PROGRAM} ${libs} -Wl,-rpath,${libdir}
    COMMAND_ERROR_IS_FATAL ANY)
