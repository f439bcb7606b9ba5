# add_strata_plugin(<name> SOURCES <file>... [LIBRARIES <target>...] [OUTPUT_DIRECTORY <folder>])
#
# One call makes a plugin: <name>.so in _moxPY/plugins/, flags, visibility and installation included.
# With OUTPUT_DIRECTORY it lies in that folder instead and is not installed (examples, plugins made for tests).
# Its object files are a target of their own, <name>_objects, so that tests can link what a plugin hides.
function(add_strata_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" OUTPUT_DIRECTORY "SOURCES;LIBRARIES")

    add_library(${name}_objects OBJECT ${arg_SOURCES})
    target_link_libraries(${name}_objects
        PUBLIC strata::core anvil::core ${arg_LIBRARIES}
        PRIVATE mox::build_flags)

    add_library(${name} MODULE $<TARGET_OBJECTS:${name}_objects>)
    target_link_libraries(${name} PRIVATE strata::core anvil::core ${arg_LIBRARIES} mox::build_flags)
    set_target_properties(${name} PROPERTIES PREFIX "" LINKER_LANGUAGE CXX)
    mox_keep_import_library_away(${name})

    if(arg_OUTPUT_DIRECTORY)
        set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}$<0:>")
    else()
        mox_place_in_package(${name} SUBFOLDER plugins)
    endif()
endfunction()
