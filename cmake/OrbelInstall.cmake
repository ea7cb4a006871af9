include(CMakePackageConfigHelpers)

# The components become packages. A client that has this project in a subfolder names components itself.
if(PROJECT_IS_TOP_LEVEL)
    set(runtime runtime)
    set(development dev)
else()
    set(runtime "${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME}")
    set(development "${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME}")
endif()

install(
    TARGETS OrbelLib
    EXPORT OrbelLibTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT "${runtime}"
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            COMPONENT "${runtime}"
            NAMELINK_COMPONENT "${development}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT "${development}"
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT "${development}")

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/OrbelLib")
install(
    EXPORT OrbelLibTargets
    NAMESPACE OrbelLib::
    DESTINATION "${package_dir}"
    COMPONENT "${development}")
configure_package_config_file(cmake/OrbelLibConfig.cmake.in "${PROJECT_BINARY_DIR}/OrbelLibConfig.cmake"
                              INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/OrbelLibConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/OrbelLibConfig.cmake" "${PROJECT_BINARY_DIR}/OrbelLibConfigVersion.cmake"
        DESTINATION "${package_dir}"
        COMPONENT "${development}")

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
install(
    FILES "${PROJECT_BINARY_DIR}/orbellib.pc"
    DESTINATION "${pkgconfig_dir}"
    COMPONENT "${development}")

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()

# The pages link to each other and to the examples, so they keep their places.
set(doc_dir "${CMAKE_INSTALL_DOCDIR}")
if(WIN32)
    set(doc_dir ".")
    orbel_compiler_runtime(runtime_dlls)
    list(TRANSFORM runtime_dlls REPLACE "^.*/" "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/")
    install(
        FILES ${runtime_dlls}
        DESTINATION "${CMAKE_INSTALL_BINDIR}"
        COMPONENT runtime)
    configure_file(cmake/README-SDK.txt.in "${PROJECT_BINARY_DIR}/README-SDK.txt" @ONLY NEWLINE_STYLE CRLF)
    install(
        FILES "${PROJECT_BINARY_DIR}/README-SDK.txt"
        DESTINATION .
        COMPONENT dev)
endif()
install(
    FILES README.md CHANGELOG.md
    DESTINATION "${doc_dir}"
    COMPONENT dev)
install(
    DIRECTORY docs examples
    DESTINATION "${doc_dir}"
    COMPONENT dev
    PATTERN weather.svg EXCLUDE)
