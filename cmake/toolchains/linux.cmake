# Linux from glibc 2.17 on, which old clusters have, with libc++ inside each library. The files of the processors set
# CMAKE_SYSTEM_PROCESSOR before they include this.
set(CMAKE_SYSTEM_NAME Linux)
set(mox_zig_target "${CMAKE_SYSTEM_PROCESSOR}-linux-gnu.2.17")
include("${CMAKE_CURRENT_LIST_DIR}/zig.cmake")

# Without symbols: whoever installs such a library later may have no program that strips it.
foreach(kind IN ITEMS SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_RELEASE_INIT -s)
endforeach()
