# What CPack makes of an installation, see docs/packages.md: three Debian packages, or one archive with everything.
set(CPACK_PACKAGE_VENDOR "OrbelLib")
set(CPACK_PACKAGE_CONTACT "OrbelLib developers <developers@orbellib.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "live data model for plug-ins of a real-time 3D host")
set(CPACK_COMPONENTS_ALL runtime dev)
if(ORBEL_BUILD_KOR AND ORBEL_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_STRIP_FILES ON)
string(TOLOWER "orbellib-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-x86_64" CPACK_PACKAGE_FILE_NAME)

# The name that Debian expects of a package with this soname.
set(library_package "liborbellib${PROJECT_VERSION_MAJOR}")
set(summary "A show is a tree of named fields, addressed by paths; plug-ins, scripts and
operators write values into it, and every handler registered on a path is
told at once.
.
")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${summary}This package has the shared library.")
set(CPACK_COMPONENT_DEV_DESCRIPTION
    "${summary}This package has what programs and plug-ins are built with: headers, the
CMake package and the pkg-config file. Documents, examples and the
pretty-printers for gdb come with it.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "${summary}This package has Kor, the headless development host, with its plug-ins, and
the program orbel, which checks, shows and tries what the library reads.")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/orbel")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${library_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# CPack would add scripts that call ldconfig, which an installation into another root cannot run. The trigger does
# without; the dependencies come from debian-files.cmake.
file(WRITE "${PROJECT_BINARY_DIR}/debian/triggers" "activate-noawait ldconfig\n")
file(WRITE "${PROJECT_BINARY_DIR}/debian/shlibs"
     "libOrbelLib ${PROJECT_VERSION_MAJOR} ${library_package} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/debian/triggers"
                                               "${PROJECT_BINARY_DIR}/debian/shlibs")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME liborbellib-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION}), libstdc++-12-dev | libstdc++-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "gdb, orbel-tools")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME orbel-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library_package} (>= ${PROJECT_VERSION})")

set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian-files.cmake")
set(CPACK_ORBEL_PACKAGES "${library_package}" liborbellib-dev orbel-tools)
set(CPACK_ORBEL_LIBRARY "libOrbelLib.so.${PROJECT_VERSION}")
string(TIMESTAMP CPACK_ORBEL_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
include(CPack)
