# mox::version: the project's version for C++, as <mox_version.hpp>.
configure_file("${CMAKE_CURRENT_LIST_DIR}/mox_version.hpp.in"
    "${PROJECT_BINARY_DIR}/generated/mox_version.hpp" @ONLY)

add_library(mox_version_header INTERFACE)
add_library(mox::version ALIAS mox_version_header)
target_include_directories(mox_version_header INTERFACE "${PROJECT_BINARY_DIR}/generated")
