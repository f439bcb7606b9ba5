# What the toolchain files of all other systems share: Zig as the compiler (tools/systems/zig.py), Clang with libc++.
# They set mox_zig_target, in Zig's spelling, before they include this.
set(MOX_SYSTEMS_DIR "${CMAKE_CURRENT_LIST_DIR}/../../build/systems" CACHE PATH "What building for other systems needs")
# Trial compilations read the toolchain file again.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MOX_SYSTEMS_DIR)
set(mox_zig_programs "${MOX_SYSTEMS_DIR}/zig/bin")

foreach(language IN ITEMS C CXX)
    set(CMAKE_${language}_COMPILER_TARGET "${mox_zig_target}")
endforeach()
set(CMAKE_C_COMPILER "${mox_zig_programs}/cc")
set(CMAKE_CXX_COMPILER "${mox_zig_programs}/c++")
set(CMAKE_RC_COMPILER "${mox_zig_programs}/rc")
foreach(language IN ITEMS C CXX)
    set(CMAKE_${language}_COMPILER_AR "${mox_zig_programs}/ar")
    set(CMAKE_${language}_COMPILER_RANLIB "${mox_zig_programs}/ranlib")
endforeach()
set(CMAKE_AR "${mox_zig_programs}/ar")
set(CMAKE_RANLIB "${mox_zig_programs}/ranlib")

# Programs are run here, so they are this system's.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
