# Built from source everywhere, so that it always has the flags of the build it is part of:
# sanitizers, another compiler, Windows.
set(ORBEL_GOOGLETEST_DIR
    "/usr/src/googletest"
    CACHE PATH "Source folder of GoogleTest (Debian package googletest)")
if(NOT EXISTS "${ORBEL_GOOGLETEST_DIR}/CMakeLists.txt")
    message(FATAL_ERROR "GoogleTest is not at ${ORBEL_GOOGLETEST_DIR}: install the package googletest, "
                        "set ORBEL_GOOGLETEST_DIR, or set ORBEL_BUILD_TESTS to OFF")
endif()

set(INSTALL_GTEST OFF)
set(BUILD_GMOCK OFF)
set(BUILD_SHARED_LIBS OFF)
set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
add_subdirectory("${ORBEL_GOOGLETEST_DIR}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)

include(GoogleTest)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # Each of thousands of processes lists all tests, chooses its own and takes all of them apart in the end: worth
    # optimizing, but not as far as the compiler can.
    target_compile_options(gtest PRIVATE -O1 -g0)
    target_compile_options(gtest_main PRIVATE -O0 -g0)
endif()
if(ORBEL_TEST_FORKS)
    target_compile_options(gtest PRIVATE -fno-sanitize=all)
endif()

# orbel_test(NAME SOURCES...) adds a test executable that sees what a client sees.
#
#   orbel_test(tree_test tree/DataFieldTest.cpp tree/DataNodeTest.cpp)
#
# Each TEST runs in a process of its own, because the library keeps process-wide state.
function(orbel_test name)
    orbel_add_test_executable(${name} OrbelLib ${ARGN})
endfunction()

# orbel_internal_test(NAME SOURCES...) is the same for private code: the library's objects are
# linked into the executable instead of the library.
function(orbel_internal_test name)
    orbel_add_test_executable(${name} orbel_objects ${ARGN})
endfunction()

function(orbel_add_test_executable name library)
    add_executable(${name} ${ARGN})
    orbel_private_settings(${name})
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        # A test runs for a moment and compiles for long: only the library is worth optimizing.
        target_compile_options(${name} PRIVATE -O0)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # Contract: the destructor of DataHandler is not virtual; tests delete handlers of exactly the class they made.
        target_compile_options(${name} PRIVATE -Wno-delete-non-abstract-non-virtual-dtor)
        if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
            # A tenth of the time that tests take to compile. What they do themselves is looked at by GCC's sanitizers.
            target_compile_options(${name} PRIVATE -fno-sanitize=undefined)
        endif()
    endif()
    if(ORBEL_TEST_BATCHES)
        # Tests share the templates they instantiate, so that eight at once take less than one after the other.
        # A name in the anonymous namespace of one must not be in that of another then.
        set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # For this warning a batch is a header, in which a class should not derive from an anonymous one.
            target_compile_options(${name} PRIVATE -Wno-subobject-linkage)
        elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
            # The same for a local variable, which may be called like something in the source before.
            target_compile_options(${name} PRIVATE -Wno-shadow)
        endif()
    endif()
    if(MINGW AND ORBEL_LLD)
        # GNU's linker takes half a minute for the largest of them.
        target_link_options(${name} PRIVATE "SHELL:-wrapper ${PROJECT_SOURCE_DIR}/cmake/mingw-lld.sh")
    endif()
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_compile_definitions(${name} PRIVATE ORBEL_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
    if(ORBEL_TEST_FORKS)
        target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/ForkingMain.cpp")
        set_source_files_properties("${PROJECT_SOURCE_DIR}/tests/support/ForkingMain.cpp"
                                    PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        target_link_libraries(${name} PRIVATE ${library} GTest::gtest)
    else()
        target_link_libraries(${name} PRIVATE ${library} GTest::gtest_main)
    endif()
    # Takes a third of the time it takes to compile the tests; made once for all that are compiled with the same flags.
    get_property(owner GLOBAL PROPERTY orbel_precompiled_with_${library})
    if(owner)
        target_precompile_headers(${name} REUSE_FROM ${owner})
    else()
        target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
        set_property(GLOBAL PROPERTY orbel_precompiled_with_${library} ${name})
    endif()
    if(ORBEL_TEST_FORKS)
        # All at once, in four shares, beside each by itself.
        foreach(share RANGE 3)
            add_test(NAME ${name}.share_${share} COMMAND ${name} --forks --all --patient --gtest_brief=1)
            set_tests_properties(${name}.share_${share}
                                 PROPERTIES LABELS whole TIMEOUT 3600 ENVIRONMENT
                                            "GTEST_SHARD_INDEX=${share};GTEST_TOTAL_SHARDS=4")
        endforeach()
    endif()
    gtest_discover_tests(
        ${name}
        TEST_PREFIX "${name}."
        NO_PRETTY_VALUES
        PROPERTIES LABELS single
        DISCOVERY_TIMEOUT 120)
endfunction()
