# mox::python: the interpreter's and NumPy's headers with the API levels that this module keeps to.
#
# When building for another system, the interpreter is this system's, which runs our tools. Headers and library are
# the other's: Python_INCLUDE_DIR, Python_LIBRARY and Python_NumPy_INCLUDE_DIR name them, MOX_PYTHON_SOABI what stands
# in the names of its extension modules ("cp313-win_amd64").
set(MOX_PYTHON_SOABI "" CACHE STRING "What stands in the names of extension modules, when building for another system")
if(CMAKE_CROSSCOMPILING AND POLICY CMP0190)
    # The new rule wants one interpreter for both.
    cmake_policy(SET CMP0190 OLD)
endif()
find_package(Python 3.11 REQUIRED COMPONENTS Interpreter Development.Module NumPy)
if(CMAKE_CROSSCOMPILING)
    set(Python_SOABI "${MOX_PYTHON_SOABI}")
endif()

add_library(mox_python INTERFACE)
add_library(mox::python ALIAS mox_python)
target_link_libraries(mox_python INTERFACE Python::Module Python::NumPy)
# Built against the headers of NumPy 2, runs from NumPy 1.20's C API upwards.
target_compile_definitions(mox_python INTERFACE
    NPY_TARGET_VERSION=NPY_1_20_API_VERSION
    NPY_NO_DEPRECATED_API=NPY_1_20_API_VERSION)

# The headers say it themselves; the interpreter may not have NumPy.
file(STRINGS "${Python_NumPy_INCLUDE_DIRS}/numpy/numpyconfig.h" mox_numpy_2 REGEX "define NPY_2_0_API_VERSION")
if(NOT mox_numpy_2)
    message(FATAL_ERROR
        "NumPy's headers in ${Python_NumPy_INCLUDE_DIRS} are those of NumPy 1; those of NumPy 2 are needed to build a "
        "module that runs with NumPy 1.26 and 2.")
endif()
