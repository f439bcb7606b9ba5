# mox_add_cpp_tests(<name> SOURCES <file>... [LIBRARIES <target>...])
#
# One GoogleTest executable whose tests ctest knows one by one.
include(GoogleTest)

function(mox_build_googletest folder)
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    set(INSTALL_GTEST OFF)
    set(BUILD_SHARED_LIBS OFF)
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
    add_subdirectory("${folder}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
endfunction()

mox_find_googletest()
if(NOT GTest_FOUND)
    if(NOT MOX_GOOGLETEST_SOURCES)
        message(FATAL_ERROR "GoogleTest is neither installed nor could it be fetched; the tests need it.")
    endif()
    message(STATUS "GoogleTest: ${MOX_GOOGLETEST_SOURCES}")
    mox_build_googletest("${MOX_GOOGLETEST_SOURCES}")
endif()

function(mox_add_cpp_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main mox::build_flags)
    gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST)
endfunction()
