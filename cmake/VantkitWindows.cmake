# What Explorer and Windows read in a DLL or a program before anything of it runs. Nothing elsewhere.

include_guard(GLOBAL)

if(WIN32)
    enable_language(RC)
endif()

set(vantkit_windows_templates ${CMAKE_CURRENT_LIST_DIR}/windows)

# vantkit_add_version_resource(<target> <description>)
#
# The project's version, and for a program the icon and the manifest, too.
function(vantkit_add_version_resource target description)
    if(NOT WIN32)
        return()
    endif()
    set(folder ${vantkit_windows_templates})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        set(file_type VFT_APP)
        set(file_name ${target}${CMAKE_EXECUTABLE_SUFFIX})
        configure_file(${folder}/program.rc.in ${target}-program.rc @ONLY)
        target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}-program.rc)
        set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}-program.rc PROPERTIES
            OBJECT_DEPENDS "${folder}/vantkit.ico;${folder}/program.manifest")
        if(MSVC)
            target_sources(${target} PRIVATE ${folder}/program.manifest)
        endif()
    else()
        set(file_type VFT_DLL)
        set(file_name ${CMAKE_SHARED_LIBRARY_PREFIX}${target}${CMAKE_SHARED_LIBRARY_SUFFIX})
    endif()
    configure_file(${folder}/version.rc.in ${target}-version.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}-version.rc)
endfunction()
