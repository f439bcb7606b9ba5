"""Importing the module once, twice and not at all."""

from __future__ import annotations

from pathlib import Path

import pytest
from support.c3d_bytes import c3d_bytes
from support.package_copy import PackageCopy

IMPORT_TWICE = """
import sys, _moxPY
first = _moxPY
del sys.modules["_moxPY"]
import _moxPY
"""

NOTED = "[info] [strata] The noting plugin registers"


def test_an_import_prints_nothing(package: PackageCopy):
    package.add_own_plugins()
    assert package.output_of("import _moxPY") == ""


def test_the_module_may_lie_in_any_folder(tmp_path: Path):
    package = PackageCopy(tmp_path / "膝 mm² 'quoted'")
    package.add_test_plugin("noting")
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, NOTED]


def test_a_second_import_makes_another_module(package: PackageCopy):
    code = f"{IMPORT_TWICE}print(first is _moxPY, _moxPY.moxGetVersion())"
    assert package.output_of(code) == "False 2025.3.2\n"


def test_a_second_import_logs_the_start_again(package: PackageCopy):
    package.output_of(IMPORT_TWICE)
    assert package.log() == package.start_lines * 2


def test_a_second_import_registers_no_plugin_twice(package: PackageCopy):
    package.add_test_plugin("noting")
    package.output_of(IMPORT_TWICE)
    assert package.log() == [*package.start_lines, NOTED, *package.start_lines]


def test_a_second_import_reads_files(package: PackageCopy, tmp_path: Path):
    package.add_own_plugins()
    path = tmp_path / "trial.c3d"
    path.write_bytes(c3d_bytes({"LASI": [[1, 2, 3]]}))
    code = f"{IMPORT_TWICE}print(_moxPY.moxGetPointNumber(_moxPY.moxReadAcquisition(sys.argv[1])))"
    assert package.output_of(code, path) == "1.0\n"


def test_handles_pass_between_both_modules(package: PackageCopy):
    code = f"{IMPORT_TWICE}print(_moxPY.moxGetPointNumber(first.moxNewAcquisition(3)))"
    assert package.output_of(code) == "3.0\n"


def test_handles_of_the_first_module_survive_it(package: PackageCopy):
    code = """
import gc, sys, _moxPY
handle = _moxPY.moxNewAcquisition(2)
get_number = _moxPY.moxGetPointNumber
del sys.modules["_moxPY"], _moxPY
gc.collect()
import _moxPY
print(_moxPY.moxGetPointNumber(handle), get_number(handle))
"""
    assert package.output_of(code) == "2.0 2.0\n"


def test_ten_imports_in_a_row(package: PackageCopy):
    package.add_test_plugin("noting")
    package.output_of(f"for _ in range(5):{IMPORT_TWICE}".replace("\n", "\n    "))
    assert package.log().count(NOTED) == 1


def test_handles_that_live_until_the_end_do_no_harm(package: PackageCopy):
    code = """
import builtins, _moxPY
builtins.kept = [_moxPY.moxNewAcquisition(1, 10), _moxPY.anvil_to_json([1])]
kept[0].append(kept[1]) if hasattr(kept[0], "append") else None
"""
    assert package.output_of(code) == ""


BLOCK = """
import sys

class Blocker:
    def __init__(self, name, error):
        self.name, self.error = name, error

    def find_spec(self, name, path=None, target=None):
        if name == self.name or name.startswith(self.name + "."):
            raise self.error(f"no {name} here", name=name)

def import_module():
    try:
        import _moxPY
        print(_moxPY.moxGetVersion())
    except ImportError as error:
        print(type(error).__name__, error)
"""

FAILURE = "ImportError numpy._core.multiarray failed to import\n"


def test_without_numpy_the_import_fails(package: PackageCopy):
    code = f"{BLOCK}sys.meta_path.insert(0, Blocker('numpy', ModuleNotFoundError)); import_module()"
    finished = package.run(code)
    assert finished.stdout == FAILURE
    assert finished.stderr.splitlines()[-1] == "ModuleNotFoundError: no numpy here"
    assert not package.state.exists()


def test_numpy_that_comes_later_is_found(package: PackageCopy):
    code = f"""{BLOCK}
sys.meta_path.insert(0, Blocker('numpy', ModuleNotFoundError))
import_module()
del sys.meta_path[0]
import_module()
"""
    assert package.run(code).stdout == f"{FAILURE}2025.3.2\n"


FAKE_NUMPY = """
import types

def fake_numpy(core, umath):
    # `numpy` with one submodule, which has the attributes of `umath`.
    names = ["numpy", f"numpy.{core}", f"numpy.{core}._multiarray_umath"]
    for name in names:
        sys.modules[name] = types.ModuleType(name)
        sys.modules[name].__path__ = []
    vars(sys.modules[names[-1]]).update(umath)
"""


def test_the_older_place_of_numpy_is_tried(package: PackageCopy):
    code = f"""{BLOCK}{FAKE_NUMPY}
from numpy._core import _multiarray_umath as umath
known = dict(vars(umath))
for name in [name for name in sys.modules if name.partition(".")[0] == "numpy"]:
    del sys.modules[name]
fake_numpy("core", known)
sys.meta_path.insert(0, Blocker('numpy._core', ModuleNotFoundError))
import_module()
"""
    assert package.output_of(code) == "2025.3.2\n"


def test_another_failure_than_a_missing_module_is_not_passed_over(package: PackageCopy):
    code = f"""{BLOCK}{FAKE_NUMPY}
fake_numpy("core", {{}})
sys.meta_path.insert(0, Blocker('numpy._core', ImportError))
import_module()
"""
    finished = package.run(code)
    assert finished.stdout == FAILURE
    assert finished.stderr.splitlines()[-1] == "ImportError: no numpy._core here"


def test_an_interface_of_numpy_that_is_no_capsule_is_refused(package: PackageCopy):
    code = f"""{BLOCK}{FAKE_NUMPY}
fake_numpy("_core", {{"_ARRAY_API": 42}})
import_module()
"""
    finished = package.run(code)
    assert finished.stdout == FAILURE
    assert finished.stderr.splitlines()[-1] == "RuntimeError: _ARRAY_API is not PyCapsule object"


# A table of NumPy's C functions, of which only those that describe it are there.
FAKE_TABLE = """
import ctypes

def fake_table(abi, feature, endian):
    result = ctypes.CFUNCTYPE(ctypes.c_uint)
    functions = [result(lambda: abi), result(lambda: endian), result(lambda: feature)]
    table = (ctypes.c_void_p * 400)()
    for place, function in zip((0, 210, 211), functions):
        table[place] = ctypes.cast(function, ctypes.c_void_p)
    new_capsule = ctypes.pythonapi.PyCapsule_New
    new_capsule.restype = ctypes.py_object
    new_capsule.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_void_p]
    fake_numpy.kept = table, functions
    return new_capsule(ctypes.addressof(table), None, None)
"""

ABI, FEATURE, LITTLE, BIG, UNKNOWN = 0x2000000, 14, 1, 2, 0


@pytest.mark.parametrize(
    ("abi", "feature", "endian", "cause"),
    [
        (ABI + 1, FEATURE, LITTLE, "module compiled against ABI version"),
        (ABI, FEATURE - 1, LITTLE, "module was compiled against NumPy C-API version"),
        (ABI, FEATURE, UNKNOWN, "FATAL: module compiled as unknown endian"),
        (
            ABI,
            FEATURE,
            BIG,
            "FATAL: module compiled as little endian, but detected different endianness at runtime",
        ),
    ],
    ids=["too new", "too old", "unknown byte order", "other byte order"],
)
def test_a_numpy_that_does_not_fit_is_refused(
    package: PackageCopy, abi: int, feature: int, endian: int, cause: str
):
    code = f"""{BLOCK}{FAKE_NUMPY}{FAKE_TABLE}
fake_numpy("_core", {{"_ARRAY_API": fake_table({abi}, {feature}, {endian})}})
import_module()
import_module()
"""
    finished = package.run(code)
    assert finished.stdout == FAILURE * 2  # the table that was refused is not taken later
    assert cause in finished.stderr
