# mox::build_flags: language standard, warnings, visibility and sanitizers of our own targets, said once.
# Link it PRIVATE. Warnings become errors with CMAKE_COMPILE_WARNING_AS_ERROR (presets dev and sanitize).
add_library(mox_build_flags INTERFACE)
add_library(mox::build_flags ALIAS mox_build_flags)

set(mox_gnu_like "$<NOT:$<CXX_COMPILER_ID:MSVC>>")

target_compile_features(mox_build_flags INTERFACE cxx_std_20)
target_compile_options(mox_build_flags INTERFACE
    "$<IF:${mox_gnu_like},-Wall;-Wextra;-Wpedantic;-Wconversion;-Wshadow,/W4;/permissive-;/utf-8>"
    "$<${mox_gnu_like}:-fvisibility=hidden;-fvisibility-inlines-hidden>"
    # A product and a sum in one step round once, and only some processors have it: numbers would differ between systems.
    "$<${mox_gnu_like}:-ffp-contract=off>"
    # Unique symbols would pin a file in memory: a plugin has to leave the process when it is unloaded.
    "$<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>"
    # Warns about the standard library's own string operations (GCC bug 105651).
    "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>")
# The system's header defines words such as min and small unless it is asked not to.
target_compile_definitions(mox_build_flags INTERFACE "$<$<PLATFORM_ID:Windows>:NOMINMAX;WIN32_LEAN_AND_MEAN>")
# Includes start with the folder ("store/typed_access.hpp"), whoever writes them.
target_include_directories(mox_build_flags INTERFACE "${PROJECT_SOURCE_DIR}")
# Static libraries and object libraries end up in shared ones.
set_target_properties(mox_build_flags PROPERTIES INTERFACE_POSITION_INDEPENDENT_CODE ON)

if(MOX_SANITIZE)
    list(JOIN MOX_SANITIZE "," mox_sanitizers)
    # The first finding ends the program, so that a test cannot pass over it.
    set(mox_sanitize_flags "-fsanitize=${mox_sanitizers}" -fno-sanitize-recover=all)
    target_compile_options(mox_build_flags INTERFACE ${mox_sanitize_flags} -fno-omit-frame-pointer)
    target_link_options(mox_build_flags INTERFACE ${mox_sanitize_flags})
endif()
