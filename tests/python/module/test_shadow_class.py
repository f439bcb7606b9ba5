"""Handles as instances of a Python class that was registered for them.

A class stays registered, so each test runs in a process of its own.
"""

from __future__ import annotations

import pytest
from support.package_copy import PackageCopy

REGISTER = """
import _moxPY

class data_store:
    def __init__(self, *arguments):
        print("initialised", *arguments)

assert _moxPY.data_store_swigregister(data_store) is None
"""

BY_HAND = """
import _moxPY

class data_store:
    def __init__(self):
        assert _moxPY.data_store_swiginit(self, _moxPY.new_data_store()) is None
"""


@pytest.mark.parametrize("make", ["new_data_store()", "moxNewAcquisition(1, 10)"])
def test_handles_are_instances_of_the_registered_class(package: PackageCopy, make: str):
    code = f"""{REGISTER}
handle = _moxPY.{make}
print(type(handle).__name__, list(vars(handle)), type(handle.this).__name__)
"""
    assert package.output_of(code) == "data_store ['this'] SwigPyObject\n"


def test_instances_are_taken_as_handles(package: PackageCopy):
    code = f"""{REGISTER}
handle = _moxPY.moxNewAcquisition(2, 10)
print(_moxPY.moxGetPointNumber(handle), _moxPY.moxGetPointNumber(handle.this))
"""
    assert package.output_of(code) == "2.0 2.0\n"


def test_an_instance_is_deleted_by_its_handle(package: PackageCopy):
    code = f"""{REGISTER}
handle = _moxPY.new_data_store()
_moxPY.delete_data_store(handle)
print(handle.this.own())
try:
    _moxPY.moxGetPoints(handle)
except ValueError as error:
    print(error)
"""
    assert package.output_of(code) == (
        "False\n"
        "invalid null reference in method 'moxGetPoints', "
        "argument 3 of type 'strata::data_store'\n"
    )


def test_json_proxies_stay_what_they_are(package: PackageCopy):
    code = f"{REGISTER}print(type(_moxPY.anvil_to_json(1)).__name__)"
    assert package.output_of(code) == "SwigPyObject\n"


def test_the_last_registered_class_counts(package: PackageCopy):
    code = f"""{REGISTER}
class newer:
    pass

_moxPY.data_store_swigregister(newer)
print(type(_moxPY.new_data_store()).__name__)
"""
    assert package.output_of(code) == "newer\n"


def test_a_second_import_keeps_the_registered_class(package: PackageCopy):
    code = f"""{REGISTER}
import sys
del sys.modules["_moxPY"]
import _moxPY
print(type(_moxPY.new_data_store()).__name__)
"""
    assert package.output_of(code) == "data_store\n"


NAMES = {
    "None": "NoneType",
    "1": "int",
    "data_store()": "data_store",
    "'data_store'": "str",
    "type(_moxPY.new_data_store())": "type",  # a class that makes no instances
}


@pytest.mark.parametrize(("value", "kind"), NAMES.items())
def test_what_makes_no_instances_is_not_registered(package: PackageCopy, value: str, kind: str):
    code = f"""{BY_HAND}
try:
    _moxPY.data_store_swigregister({value})
except TypeError as error:
    print(error)
print(type(_moxPY.new_data_store()).__name__)
"""
    assert package.output_of(code) == (
        "in method 'data_store_swigregister', argument 1 of type 'PyObject *': "
        f"a class is expected, not '{kind}'\nSwigPyObject\n"
    )


def test_an_instance_gets_a_handle(package: PackageCopy):
    code = f"""{BY_HAND}
instance = data_store()
print(type(instance.this).__name__, _moxPY.delete_data_store(instance))
"""
    assert package.output_of(code) == "SwigPyObject None\n"


def test_an_instance_gets_the_handle_of_another(package: PackageCopy):
    code = f"""{BY_HAND}
first, second = data_store(), data_store()
_moxPY.data_store_swiginit(second, first)
print(second.this is first.this)
"""
    assert package.output_of(code) == "True\n"


@pytest.mark.parametrize("value", ["None", "42", "object()"])
def test_nothing_but_a_handle_is_given_to_an_instance(package: PackageCopy, value: str):
    code = f"""{BY_HAND}
instance = data_store()
kept = instance.this
try:
    _moxPY.data_store_swiginit(instance, {value})
except TypeError as error:
    print(error, instance.this is kept)
"""
    assert package.output_of(code) == (
        "in method 'data_store_swiginit', argument 2 of type 'strata::data_store *' True\n"
    )


def test_an_instance_that_takes_no_attributes_raises(package: PackageCopy):
    code = """
import _moxPY
try:
    _moxPY.data_store_swiginit(object(), _moxPY.new_data_store())
except AttributeError as error:
    print("refused")
"""
    assert package.output_of(code) == "refused\n"


def test_a_class_without_room_for_a_handle_raises(package: PackageCopy):
    code = """
import _moxPY

class closed:
    __slots__ = ()

_moxPY.data_store_swigregister(closed)
try:
    _moxPY.new_data_store()
except AttributeError as error:
    print("refused")
"""
    assert package.output_of(code) == "refused\n"


def test_a_class_that_makes_something_else_raises_what_it_raises(package: PackageCopy):
    code = """
import _moxPY

class refusing:
    def __new__(cls):
        raise LookupError("no instances")

_moxPY.data_store_swigregister(refusing)
try:
    _moxPY.new_data_store()
except LookupError as error:
    print(error)
"""
    assert package.output_of(code) == "no instances\n"
