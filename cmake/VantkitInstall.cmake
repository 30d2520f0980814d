# What an installed kit consists of: the library, its public headers, the themes, a CMake package and a pkg-config file.

include(CMakePackageConfigHelpers)

set(vantkit_themes_dir ${CMAKE_INSTALL_DATADIR}/vantkit-qt/themes)
set(vantkit_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vantkit-qt)
set(vantkit_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS vantkit-qt
    EXPORT vantkit-qt-targets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

foreach(header IN LISTS vantkit_public_headers)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vantkit-qt/${folder})
endforeach()
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vantkit-export.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vantkit-qt)

install(EXPORT vantkit-qt-targets
    NAMESPACE vantkit::
    DESTINATION ${vantkit_package_dir})

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/vantkit-qt-config.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/vantkit-qt-config.cmake
    INSTALL_DESTINATION ${vantkit_package_dir}
    PATH_VARS vantkit_themes_dir)
write_basic_package_version_file(
    ${CMAKE_CURRENT_BINARY_DIR}/vantkit-qt-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/vantkit-qt-config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/vantkit-qt-config-version.cmake
    DESTINATION ${vantkit_package_dir})

# The prefix is found from where the file lies, so that an installed tree may be moved and `cmake --install --prefix`
# holds. Where the file does not lie below the prefix, the prefix of the configuration is written down.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    set(vantkit_pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH vantkit_pc_prefix /${vantkit_pkgconfig_dir} /)
    string(REGEX REPLACE "/$" "" vantkit_pc_prefix "\${pcfiledir}/${vantkit_pc_prefix}")
endif()

function(vantkit_set_pc_dir variable dir)
    if(NOT IS_ABSOLUTE ${dir})
        set(dir "\${prefix}/${dir}")
    endif()
    set(${variable} ${dir} PARENT_SCOPE)
endfunction()

vantkit_set_pc_dir(vantkit_pc_libdir ${CMAKE_INSTALL_LIBDIR})
vantkit_set_pc_dir(vantkit_pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
vantkit_set_pc_dir(vantkit_pc_themesdir ${vantkit_themes_dir})
configure_file(
    ${PROJECT_SOURCE_DIR}/cmake/vantkit-qt.pc.in
    ${CMAKE_CURRENT_BINARY_DIR}/vantkit-qt.pc
    @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vantkit-qt.pc DESTINATION ${vantkit_pkgconfig_dir})
