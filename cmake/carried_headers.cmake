# What a source archive carries along, from where pyproject.toml puts it into the archive.
find_package(Python 3.11 REQUIRED COMPONENTS Interpreter)
set(MOX_DEPS_DIR "${PROJECT_SOURCE_DIR}/build/deps" CACHE PATH "Where fetched packages are unpacked")
execute_process(
    COMMAND "${Python_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/tools/carry_headers.py" --deps "${MOX_DEPS_DIR}"
        --into "${PROJECT_SOURCE_DIR}/build/carried"
    RESULT_VARIABLE result
    ERROR_VARIABLE complaint)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${complaint}")
endif()
