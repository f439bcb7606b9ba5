# Windows on x86-64, with the C runtime that every Windows has (UCRT) and libc++ inside each library.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(mox_zig_target x86_64-windows-gnu)
include("${CMAKE_CURRENT_LIST_DIR}/zig.cmake")

# Without files of symbols beside each library.
foreach(kind IN ITEMS EXE MODULE SHARED)
    set(CMAKE_${kind}_LINKER_FLAGS_RELEASE_INIT "-s")
endforeach()
