# One folder layout, in the build tree and installed:
#
#     _moxPY/__init__.<abi>.so     the extension module
#     _moxPY/lib*_core.so          the core libraries
#     _moxPY/plugins/*.so          the plugins
#     _moxPY/__init__.pyi          the types of the module
#
# so that PYTHONPATH=<build>/package:python works without an installation.
include(GenerateExportHeader)

set(MOX_PACKAGE_DIR "${PROJECT_BINARY_DIR}/package/_moxPY")

# mox_keep_import_library_away(<target>)
# Nobody links to a module, but some linkers leave a file for that beside it, where plugins are looked for.
function(mox_keep_import_library_away target)
    if(MINGW)
        target_link_options(${target} PRIVATE "-Wl,--out-implib,${CMAKE_CURRENT_BINARY_DIR}/${target}.lib")
    endif()
endfunction()

# mox_place_in_package(<target> [SUBFOLDER <name>])
# Puts a library into the package, where it finds its neighbours by $ORIGIN. Installs it there too.
function(mox_place_in_package target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" SUBFOLDER "")
    set(origin "$ORIGIN")
    set(folder "${MOX_PACKAGE_DIR}")
    set(destination _moxPY)
    if(arg_SUBFOLDER)
        string(APPEND origin "/..")
        string(APPEND folder "/${arg_SUBFOLDER}")
        string(APPEND destination "/${arg_SUBFOLDER}")
    endif()
    # The empty expression keeps multi-configuration generators from adding a folder per configuration.
    set_target_properties(${target} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY "${folder}$<0:>"
        RUNTIME_OUTPUT_DIRECTORY "${folder}$<0:>"
        INSTALL_RPATH "${origin}"
        BUILD_WITH_INSTALL_RPATH ON)
    set_property(GLOBAL APPEND PROPERTY MOX_PACKAGED_TARGETS ${target})
    install(TARGETS ${target}
        LIBRARY DESTINATION "${destination}" COMPONENT package
        RUNTIME DESTINATION "${destination}" COMPONENT package
        ARCHIVE DESTINATION "${destination}" COMPONENT development EXCLUDE_FROM_ALL)
endfunction()

# mox_export_header(<target> <base>)
# Generates <base/export.hpp> with BASE_EXPORT for a shared library with hidden visibility.
function(mox_export_header target base)
    string(TOUPPER "${base}" macro_prefix)
    generate_export_header(${target}
        BASE_NAME "${macro_prefix}"
        EXPORT_FILE_NAME "${CMAKE_CURRENT_BINARY_DIR}/include/${base}/export.hpp")
    target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_BINARY_DIR}/include")
endfunction()

# mox_core_library(<target> <base>)
# What anvil_core and strata_core share: flags, export header, alias <base>::core, place in the package.
function(mox_core_library target base)
    add_library(${base}::core ALIAS ${target})
    target_link_libraries(${target} PRIVATE mox::build_flags)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/include")
    mox_export_header(${target} ${base})
    mox_place_in_package(${target})
endfunction()
