# Run by CPack: what only Debian packages have, put beside what the components install.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

set(staging "${CPACK_TEMPORARY_DIRECTORY}")
# From here gdb loads it together with the library.
set(auto_load "${staging}/dev/usr/share/gdb/auto-load/usr/lib")
file(MAKE_DIRECTORY "${auto_load}")
file(WRITE "${auto_load}/${CPACK_ORBEL_LIBRARY}-gdb.py"
     "import gdb\n\ngdb.execute(\"source /usr/lib/orbellib/gdb/orbel.py\")\n")

foreach(component package IN ZIP_LISTS CPACK_COMPONENTS_ALL CPACK_ORBEL_PACKAGES)
    set(changelog "${staging}/${component}/usr/share/doc/${package}/changelog")
    file(WRITE "${changelog}" "orbellib (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
                              "  * What changed is told by CHANGELOG.md of liborbellib-dev.\n\n"
                              " -- ${CPACK_PACKAGE_CONTACT}  ${CPACK_ORBEL_DATE}\n")
    execute_process(COMMAND gzip -9n "${changelog}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

file(GLOB_RECURSE pages "${staging}/*/usr/share/man/*.1")
if(pages)
    execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()

# Debian's zsh looks for those of packages here.
set(zsh "${staging}/tools/usr/share/zsh")
if(EXISTS "${zsh}/site-functions")
    file(RENAME "${zsh}/site-functions" "${zsh}/vendor-completions")
endif()

set(scratch "${CPACK_TEMPORARY_DIRECTORY}/shlibdeps")
file(WRITE "${scratch}/debian/control" "Source: orbellib\n\nPackage: orbellib\nArchitecture: any\n")
execute_process(
    COMMAND dpkg-shlibdeps -O "${staging}/runtime/usr/lib/${CPACK_ORBEL_LIBRARY}"
    WORKING_DIRECTORY "${scratch}"
    OUTPUT_VARIABLE depends
    ERROR_VARIABLE ignored
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE "${scratch}")
string(REPLACE "shlibs:Depends=" "" CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "${depends}")
