# mox_extension_module(<target> SOURCES <file>... [LIBRARIES <target>...])
#
# The extension module as the package's own __init__: CPython accepts _moxPY/__init__.<abi>.so, and the initialising
# function stays PyInit__moxPY.
function(mox_extension_module target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    python_add_library(${target} MODULE WITH_SOABI ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} mox::python mox::version mox::build_flags)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME __init__)
    mox_keep_import_library_away(${target})
    mox_place_in_package(${target})
endfunction()
