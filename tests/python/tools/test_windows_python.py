"""What the parts of a CPython for Windows are told, without making them."""

from systems.windows_python import definition, dll_of, import_library_of


def test_each_version_has_libraries_of_its_own():
    assert dll_of("3.11") == "python311.dll"
    assert import_library_of("3.14").as_posix() == "libs/python314.lib"


def test_a_library_that_passes_its_exports_on_names_the_other():
    assert definition("python3.dll", ["Py_Main", "PyExc_OSError"], passed_to="python313") == (
        "LIBRARY python3.dll\nEXPORTS\nPy_Main=python313.Py_Main\n"
        "PyExc_OSError=python313.PyExc_OSError\n"
    )
