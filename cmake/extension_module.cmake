# mox_extension_module(<target> STUB <file> SOURCES <file>... [LIBRARIES <target>...])
#
# The extension module as the package's own __init__: CPython accepts _moxPY/__init__.<abi>.so, and the initialising
# function stays PyInit__moxPY. The stub file stands beside it, for type checkers.
function(mox_extension_module target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" STUB "SOURCES;LIBRARIES")
    python_add_library(${target} MODULE WITH_SOABI ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} mox::python mox::version mox::build_flags)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME __init__)
    mox_place_in_package(${target})

    configure_file("${arg_STUB}" "${MOX_PACKAGE_DIR}/__init__.pyi" COPYONLY)
    file(TOUCH "${MOX_PACKAGE_DIR}/py.typed")
    install(FILES "${MOX_PACKAGE_DIR}/__init__.pyi" "${MOX_PACKAGE_DIR}/py.typed"
        DESTINATION _moxPY COMPONENT package)
endfunction()
