include(CMakePackageConfigHelpers)

install(
    TARGETS OrbelLib
    EXPORT OrbelLibTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/OrbelLib")
install(
    EXPORT OrbelLibTargets
    NAMESPACE OrbelLib::
    DESTINATION "${package_dir}")
configure_package_config_file(cmake/OrbelLibConfig.cmake.in "${PROJECT_BINARY_DIR}/OrbelLibConfig.cmake"
                              INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/OrbelLibConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/OrbelLibConfig.cmake" "${PROJECT_BINARY_DIR}/OrbelLibConfigVersion.cmake"
        DESTINATION "${package_dir}")

# Relative to the file itself, so that an installed tree may be moved or given another prefix at install time.
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    set(ORBEL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
    set(ORBEL_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
    set(ORBEL_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
else()
    file(RELATIVE_PATH pc_to_prefix "/${pkgconfig_dir}" "/")
    string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
    set(ORBEL_PC_PREFIX "\${pcfiledir}/${pc_to_prefix}")
    set(ORBEL_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(ORBEL_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(cmake/orbellib.pc.in "${PROJECT_BINARY_DIR}/orbellib.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/orbellib.pc" DESTINATION "${pkgconfig_dir}")
