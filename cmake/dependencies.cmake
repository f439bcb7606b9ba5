# {fmt}, nlohmann json and, for the tests, GoogleTest. Of the first two only headers are used: a binary of another
# suite might not link. A source archive carries them; in a checkout an installed package serves first, else the Debian
# package, fetched without root.
set(MOX_CARRIED_DIR "${PROJECT_SOURCE_DIR}/third_party")
set(MOX_DEPS_DIR "${PROJECT_SOURCE_DIR}/build/deps" CACHE PATH "Where fetched packages are unpacked")
list(APPEND CMAKE_PREFIX_PATH "${MOX_DEPS_DIR}/usr")

# Headers serve every system, but packages of Debian keep them under the name of the machine's kind, and whoever builds
# for another system is not looking there.
macro(mox_search_all_kinds)
    if(CMAKE_CROSSCOMPILING)
        file(GLOB mox_kinds "${MOX_DEPS_DIR}/usr/lib/*/cmake")
        list(APPEND CMAKE_PREFIX_PATH ${mox_kinds})
    endif()
endmacro()

set(mox_fmt_versions 11...<12)
set(mox_nlohmann_json_versions 3.11.3 EXACT)
# Debian ships GoogleTest's sources for being built into the tree; a library of a newer suite would not link.
macro(mox_find_googletest)
    find_package(GTest 1.12 CONFIG QUIET)
    find_path(MOX_GOOGLETEST_SOURCES googlemock/CMakeLists.txt
        PATHS /usr/src/googletest "${MOX_DEPS_DIR}/usr/src/googletest" NO_DEFAULT_PATH)
endmacro()

# mox_fetch(<Debian package>=<version pattern>...)
# Unpacks packages below MOX_DEPS_DIR, all at once since apt reads a whole suite for each call. A failure leaves a
# warning; the caller looks for the packages again.
function(mox_fetch)
    if(NOT MOX_FETCH_PACKAGES OR NOT ARGN)
        return()
    endif()
    message(NOTICE "Fetching into ${MOX_DEPS_DIR}")
    execute_process(
        COMMAND "${Python_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/tools/fetch_packages.py" --into "${MOX_DEPS_DIR}" ${ARGN}
        RESULT_VARIABLE result
        ERROR_VARIABLE complaint)
    if(NOT result EQUAL 0)
        message(WARNING "${complaint}")
    endif()
endfunction()

# mox_require(<package>), whose versions mox_<package>_versions names.
# A macro: find_package() leaves its results in the caller's scope.
macro(mox_require package)
    find_package(${package} ${mox_${package}_versions} CONFIG QUIET)
    if(NOT ${package}_FOUND)
        message(FATAL_ERROR
            "${package} (version ${mox_${package}_versions}) is neither installed nor could it be fetched. Install it "
            "and name its folder in CMAKE_PREFIX_PATH, run tools/fetch_packages.py on a Debian machine with a network, or "
            "build from a source archive, which carries it.")
    endif()
    message(STATUS "${package} ${${package}_VERSION}: ${${package}_DIR}")
endmacro()

set(mox_missing)
mox_search_all_kinds()
if(EXISTS "${MOX_CARRIED_DIR}/include")
    message(STATUS "Headers of {fmt} and nlohmann json: ${MOX_CARRIED_DIR}")
    foreach(target IN ITEMS fmt::fmt-header-only nlohmann_json::nlohmann_json)
        add_library(${target} INTERFACE IMPORTED)
        target_include_directories(${target} INTERFACE "${MOX_CARRIED_DIR}/include")
    endforeach()
    if(SKBUILD_METADATA_DIR)
        # Beside our own, in the wheel.
        install(DIRECTORY "${MOX_CARRIED_DIR}/licences/" DESTINATION "${SKBUILD_METADATA_DIR}/licenses/third_party"
            COMPONENT package)
    endif()
else()
    find_package(fmt ${mox_fmt_versions} CONFIG QUIET)
    if(NOT fmt_FOUND)
        list(APPEND mox_missing "libfmt-dev=11.*")
    endif()
    find_package(nlohmann_json ${mox_nlohmann_json_versions} CONFIG QUIET)
    if(NOT nlohmann_json_FOUND)
        list(APPEND mox_missing "nlohmann-json3-dev=*3.11.3*")
    endif()
endif()
if(MOX_BUILD_TESTS)
    mox_find_googletest()
    if(NOT GTest_FOUND AND NOT MOX_GOOGLETEST_SOURCES)
        list(APPEND mox_missing "googletest=1.*")
    endif()
endif()
mox_fetch(${mox_missing})
mox_search_all_kinds()
if(NOT EXISTS "${MOX_CARRIED_DIR}/include")
    mox_require(fmt)
    mox_require(nlohmann_json)
endif()
