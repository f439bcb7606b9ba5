# {fmt} and nlohmann json: an installed package first, else the Debian package, fetched without root.
# Both are used as headers only.
set(MOX_DEPS_DIR "${PROJECT_SOURCE_DIR}/build/deps" CACHE PATH "Where fetched packages are unpacked")
list(APPEND CMAKE_PREFIX_PATH "${MOX_DEPS_DIR}/usr")

# mox_fetch_package(<Debian package> <version pattern>)
# Unpacks a package below MOX_DEPS_DIR; a failure leaves a warning, the caller looks for the package again.
function(mox_fetch_package package version)
    if(NOT MOX_FETCH_PACKAGES)
        return()
    endif()
    message(NOTICE "Fetching ${package} into ${MOX_DEPS_DIR}")
    execute_process(
        COMMAND "${Python_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/tools/fetch_packages.py"
            --into "${MOX_DEPS_DIR}" "${package}=${version}"
        RESULT_VARIABLE result
        ERROR_VARIABLE complaint)
    if(NOT result EQUAL 0)
        message(WARNING "${complaint}")
    endif()
endfunction()

# mox_require(<package> <versions, as find_package takes them> <Debian package> <Debian version pattern>)
# A macro: find_package() leaves its results in the caller's scope.
macro(mox_require package versions debian_package debian_version)
    find_package(${package} ${versions} CONFIG QUIET)
    if(NOT ${package}_FOUND)
        mox_fetch_package(${debian_package} "${debian_version}")
        find_package(${package} ${versions} CONFIG QUIET)
    endif()
    if(NOT ${package}_FOUND)
        message(FATAL_ERROR
            "${package} (version ${versions}) is neither installed nor could it be fetched. Install it and name its "
            "folder in CMAKE_PREFIX_PATH, or run tools/fetch_packages.py on a Debian machine with a network.")
    endif()
    message(STATUS "${package} ${${package}_VERSION}: ${${package}_DIR}")
endmacro()

mox_require(fmt "11...<12" libfmt-dev "11.*")
mox_require(nlohmann_json "3.11.3;EXACT" nlohmann-json3-dev "*3.11.3*")
