# orbel_private_settings(TARGET) gives a target of this project its language level and warnings.
# They stay private: a client keeps its own.
#
#   add_executable(weather_board main.cpp)
#   orbel_private_settings(weather_board)
function(orbel_private_settings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # GCC 12 sees overlapping copies in "text" + string, which are none (its bug 105651).
            target_compile_options(${target} PRIVATE -Wno-restrict)
            if(ORBEL_PRECOMPILE)
                # In headers of the system it sees overflows in the same place; precompiled, they are not known as such.
                target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
            endif()
        endif()
        if(ORBEL_WERROR)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
endfunction()

# orbel_compile_quickly(TARGET) is for what leaves nearly all its work to the library: it takes half as long to compile.
function(orbel_compile_quickly target)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
        if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
            target_compile_options(${target} PRIVATE -O0)
        endif()
    endif()
endfunction()

# orbel_debian_headers(TARGET HEADER PACKAGE...) gives a target header-only libraries of Debian packages, each a file or
# folder of /usr/include. They serve every compiler, but the folder they are in belongs to the native one, so a folder of
# links to them alone is searched.
function(orbel_debian_headers target)
    set(folder "${PROJECT_BINARY_DIR}/headers")
    file(MAKE_DIRECTORY "${folder}")
    while(ARGN)
        list(POP_FRONT ARGN header package)
        if(NOT EXISTS "/usr/include/${header}")
            message(FATAL_ERROR "/usr/include/${header}, which ${target} needs, is missing: install ${package}")
        endif()
        file(CREATE_LINK "/usr/include/${header}" "${folder}/${header}" SYMBOLIC)
    endwhile()
    target_include_directories(${target} SYSTEM PRIVATE "${folder}")
endfunction()

# orbel_compiler_runtime(VARIABLE) tells the compiler's own DLLs, none where there are no DLLs.
# The library and its clients exchange strings, streams and exceptions, so they must share one
# C++ runtime; linking it statically into each would give every module its own.
function(orbel_compiler_runtime variable)
    set(${variable} "" PARENT_SCOPE)
    if(NOT MINGW)
        return()
    endif()
    set(paths)
    foreach(dll IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(
            COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${dll}"
            OUTPUT_VARIABLE path
            OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        # The compiler answers with the bare name when it has no such file.
        if(NOT IS_ABSOLUTE "${path}")
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where ${dll} is")
        endif()
        file(REAL_PATH "${path}" path)
        list(APPEND paths "${path}")
    endforeach()
    set(${variable} "${paths}" PARENT_SCOPE)
endfunction()

# orbel_copy_compiler_runtime(FOLDER) puts them into a folder, without what they carry for debuggers, which is ten times
# as much and would be read whenever a program starts, and so that Wine can map them instead of reading them.
function(orbel_copy_compiler_runtime folder)
    file(MAKE_DIRECTORY "${folder}")
    orbel_compiler_runtime(runtime_dlls)
    foreach(dll IN LISTS runtime_dlls)
        cmake_path(GET dll FILENAME name)
        execute_process(COMMAND "${CMAKE_OBJCOPY}" --strip-all --file-alignment 4096 "${dll}" "${folder}/${name}"
                        COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endfunction()

# orbel_host_exports(TARGET) lets an executable that defines the functions of orbel/host/HostApi.h export them, and
# nothing else, to the library and the plug-ins that it loads.
function(orbel_host_exports target)
    if(WIN32)
        target_link_options(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/host.def")
    else()
        target_link_options(${target} PRIVATE "LINKER:--export-dynamic-symbol=_api__*")
    endif()
endfunction()

# orbel_installed_path(VARIABLE FROM TO) gives the way from one folder of an installation to another. Each is relative to
# the prefix; a TO that is not is the answer itself.
function(orbel_installed_path variable from to)
    if(NOT IS_ABSOLUTE "${from}" AND NOT IS_ABSOLUTE "${to}")
        file(RELATIVE_PATH to "/${from}" "/${to}")
    endif()
    set(${variable} "${to}" PARENT_SCOPE)
endfunction()

# orbel_install_rpath(TARGET FOLDER) lets a program or module that is installed in this folder find the library, wherever
# the whole is moved.
function(orbel_install_rpath target folder)
    if(NOT WIN32)
        orbel_installed_path(to_library "${folder}" "${CMAKE_INSTALL_LIBDIR}")
        if(NOT IS_ABSOLUTE "${to_library}")
            set(to_library "\$ORIGIN/${to_library}")
        endif()
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "${to_library}")
    endif()
endfunction()
