"""Calls and failures, many times each, leave no object, no reference and no memory behind."""

from __future__ import annotations

import contextlib
import ctypes
import itertools
import sys
from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes
from support.interface import REGISTERED, Function
from support.leaks import (
    CALLS,
    SMALLEST_LOSS,
    assert_nothing_lost,
    growth_of,
    heap_is_counted,
    python_blocks_are_counted,
)
from support.proxies import Shadow, deleted_handle, new_proxy
from support.read_files import read_trial


@pytest.mark.skipif(not python_blocks_are_counted(), reason="objects are not counted")
def test_a_lost_object_is_seen():
    kept: list[object] = []
    growth = growth_of(lambda: kept.append(object()))
    assert growth.blocks >= CALLS
    assert not growth.is_level


@pytest.mark.skipif(not python_blocks_are_counted(), reason="objects are not counted")
def test_an_object_lost_at_every_second_call_is_seen():
    kept: list[object] = []
    calls = itertools.count()
    growth = growth_of(lambda: next(calls) % 2 and kept.append(object()))
    assert not growth.is_level


def test_a_lost_reference_to_an_argument_is_seen():
    argument = object()

    def lose() -> None:
        ctypes.pythonapi.Py_IncRef(ctypes.py_object(argument))

    growth = growth_of(lose, argument)
    assert growth.references == CALLS
    assert not growth.is_level


@pytest.mark.skipif(not heap_is_counted(), reason="the platform does not count the memory in use")
def test_a_lost_block_of_memory_is_seen():
    allocate = ctypes.CDLL(None).malloc
    allocate.restype = ctypes.c_void_p
    growth = growth_of(lambda: allocate(ctypes.c_size_t(16)))
    assert growth.heap >= SMALLEST_LOSS * CALLS
    assert not growth.is_level


@pytest.mark.skipif(not heap_is_counted(), reason="the platform does not count the memory in use")
def test_a_lost_store_is_seen():
    def lose() -> None:
        handle = _moxPY.new_data_store()
        getattr(handle, "this", handle).disown()  # the handle may be in a shadow

    assert not growth_of(lose).is_level


ACQUISITION = read_trial()
NEW = _moxPY.moxNewAcquisition(2, 10, 0, 3)
HANDLE_IN_SHADOW = Shadow(Shadow(new_proxy()))
JSON = _moxPY.anvil_to_json({"list": [1, 0.5, None, True, "text"], "object": {"a": {}}})
VALUE = {"list": [1, 0.5, None, True, "text"], "object": {"a": {}}}

# Functions that take one acquisition and change nothing.
GETTERS = [
    function
    for function in REGISTERED
    if function.name.startswith("moxGet")
    and not function.overloaded
    and function.parameters[0][-1:] == ["strata::data_store"]
]


@pytest.mark.parametrize("function", GETTERS, ids=str)
def test_reading_an_acquisition(function: Function):
    with contextlib.suppress(RuntimeError):  # some functions need what this trial has not
        function(ACQUISITION)

    def read() -> None:
        with contextlib.suppress(RuntimeError):
            function(ACQUISITION)

    assert_nothing_lost(read)


def proxies_in_a_chain() -> None:
    first = new_proxy()
    first.append(new_proxy())
    first.next()
    first.own(False)
    first.acquire()
    repr(first)


def registered_and_deleted() -> None:
    _moxPY.delete_data_store(_moxPY.new_data_store())


def shadow_initialised() -> None:
    _moxPY.data_store_swiginit(Shadow(None), new_proxy())


CALLS_THAT_WORK: dict[str, Callable[[], Any]] = {
    "new acquisition": lambda: _moxPY.moxNewAcquisition(2, 10, 2, 3),
    "new store": _moxPY.new_data_store,
    "deleted store": registered_and_deleted,
    "chain of proxies": proxies_in_a_chain,
    "instance method": lambda: _moxPY.SWIG_PyInstanceMethod_New(len),
    "shadow instance": shadow_initialised,
    "handle in a shadow": lambda: probe.take_store(HANDLE_IN_SHADOW),
    "version": _moxPY.moxGetVersion,
    "close": lambda: _moxPY.moxCloseAcquisition(NEW),
    "delete": lambda: _moxPY.moxDeleteAcquisition(NEW),
    "point by index": lambda: _moxPY.moxGetPoint(ACQUISITION, 0),
    "point by label": lambda: _moxPY.moxGetPoint(ACQUISITION, "RASI"),
    "analog by index": lambda: _moxPY.moxGetAnalog(ACQUISITION, 1),
    "analog by label": lambda: _moxPY.moxGetAnalog(ACQUISITION, "Fz1"),
    "unit": lambda: _moxPY.moxGetPointsUnit(ACQUISITION, "Markers"),
    "frame number": lambda: _moxPY.moxSetFrameNumber(NEW, 12),
    "frame number and ratio": lambda: _moxPY.moxSetFrameNumber(NEW, 10, 3),
    "samples per frame": lambda: _moxPY.moxSetAnalogSampleNumberPerFrame(NEW, 3),
    "resolution": lambda: _moxPY.moxSetAnalogResolution(NEW, 16),
    "gap": lambda: _moxPY.moxSetMaxInterpolationGap(NEW, 5),
    "frequency": lambda: _moxPY.moxSetFrequency(ACQUISITION, 100.0),
    "first frame": lambda: _moxPY.moxSetFirstFrame(ACQUISITION, 1, 1),
    "python to json": lambda: _moxPY.anvil_to_json(VALUE),
    "json to python": lambda: _moxPY.from_anvil_json(JSON),
    "data set": lambda: _moxPY.metadata_from_data_set(
        probe.data_set_proxy(ACQUISITION, "Format/Data/Points")
    ),
    "outputs left empty": probe.outputs_left_empty,
    "one output": lambda: probe.second_output_left_empty(object()),
}


@pytest.mark.parametrize("action", CALLS_THAT_WORK.values(), ids=CALLS_THAT_WORK)
def test_calls_that_work(action: Callable[[], Any]):
    assert_nothing_lost(action)


def test_plugins_that_are_loaded_again():
    assert_nothing_lost(lambda: (_moxPY.unload(), _moxPY.reload()), calls=30)


def failing(function: Callable[..., Any], *arguments: Any) -> Callable[[], None]:
    """The call as an action; that it fails is checked once."""
    with pytest.raises(Exception):  # noqa: B017, PT011 - each text has a test of its own
        function(*arguments)

    def action() -> None:
        with contextlib.suppress(Exception):
            function(*arguments)

    return action


OBJECTS = ("PyObject *", "PyObject *&")
TYPED = [
    function
    for function in REGISTERED
    if any(declared not in OBJECTS for types in function.parameters for declared in types)
]


@pytest.mark.parametrize("function", TYPED, ids=str)
def test_wrong_arguments(function: Function):
    count = max(function.argument_counts)
    wrong = [None, 42, object(), deleted_handle(), JSON, new_proxy()]
    if "strata::data_store" in "".join(function.prototypes):
        wrong.pop()
    if function.name == "from_anvil_json":
        wrong.remove(JSON)
    if function.name == "moxNewAcquisition":
        wrong.remove(42)
    actions = [failing(function, *[argument] * count) for argument in wrong]
    assert_nothing_lost(lambda: [action() for action in actions])


@pytest.mark.parametrize("function", REGISTERED, ids=str)
def test_wrong_counts(function: Function):
    assert_nothing_lost(failing(function, *[None] * (max(function.argument_counts) + 1)))


FAILURES: dict[str, tuple[Callable[..., Any], Any]] = {
    "missing file": (_moxPY.moxReadAcquisition, ("/no/such/file.c3d",)),
    "path that is no str": (_moxPY.moxReadAcquisition, (b"file.c3d",)),
    "missing group": (_moxPY.moxGetPoints, (_moxPY.new_data_store(),)),
    "missing point": (_moxPY.moxGetPoint, (ACQUISITION, "nobody")),
    "text without utf8 form": (_moxPY.moxGetPoint, (ACQUISITION, "\ud800")),
    "negative count": (_moxPY.moxNewAcquisition, (-1,)),
    "no memory": (_moxPY.moxNewAcquisition, (2**31 - 1, 2**31 - 1)),
    "bad ratio": (_moxPY.moxSetAnalogSampleNumberPerFrame, (NEW, 0)),
    "unsupported type": (_moxPY.anvil_to_json, ({"a": [1, (1,)]},)),
    "int beyond 32 bits": (_moxPY.anvil_to_json, ([1, 2**40],)),
    "thrown on purpose": (_moxPY.throw_type_error, (1,)),
    "no class": (_moxPY.data_store_swigregister, (1,)),
    "no handle": (_moxPY.data_store_swiginit, (Shadow(None), 1)),
    "instance without attributes": (_moxPY.data_store_swiginit, (object(), new_proxy())),
    "no proxy appended": (new_proxy().append, (1,)),
    "own of two": (new_proxy().own, (1, 2)),
    "thrown code": (probe.throw_code, (-3, "text")),
    "unexpected exception": (probe.throw_standard, ("text",)),
    "no exception": (probe.throw_unknown, ()),
    "no memory thrown": (probe.throw_no_memory, ()),
    "behind outputs": (probe.throw_behind_outputs, ("text",)),
}


@pytest.mark.parametrize(("function", "arguments"), FAILURES.values(), ids=FAILURES)
def test_failures(function: Callable[..., Any], arguments: tuple[Any, ...]):
    assert_nothing_lost(failing(function, *arguments))


def test_reading_files(tmp_path: Any):
    path = tmp_path / "trial.c3d"
    path.write_bytes(c3d_bytes({"LASI": [[1, 2, 3]], "RASI": [[4, 5, 6]]}))
    assert_nothing_lost(lambda: _moxPY.moxReadAcquisition(str(path)))


def test_files_that_cannot_be_read(tmp_path: Any):
    path = tmp_path / "cut.c3d"
    path.write_bytes(c3d_bytes({"LASI": [[1, 2, 3]]})[:700])
    assert_nothing_lost(failing(_moxPY.moxReadAcquisition, str(path)))


@pytest.mark.parametrize(
    ("function", "arguments"),
    [
        (_moxPY.moxGetPoint, (ACQUISITION, "RASI" + "x" * len(sys.argv))),
        (_moxPY.moxGetPoint, (ACQUISITION, 10**6 + len(sys.argv))),
        (_moxPY.moxSetFrequency, (NEW, 100.0 + len(sys.argv))),
        (_moxPY.moxGetPoints, (HANDLE_IN_SHADOW,)),
        (_moxPY.anvil_to_json, (object(),)),
        (_moxPY.anvil_to_json, (VALUE,)),
        (_moxPY.from_anvil_json, (JSON,)),
        (_moxPY.throw_type_error, (object(),)),
        (_moxPY.delete_data_store, (object(),)),
        (probe.take_object, (object(),)),
        (probe.as_matrix, (np.zeros((2, 3)),)),
        (probe.as_matrix, (np.zeros((2, 3), int),)),
    ],
)
def test_references_to_arguments_are_given_back(function: Any, arguments: tuple[Any, ...]):
    def call() -> None:
        with contextlib.suppress(Exception):
            function(*arguments)

    growth = growth_of(call, *arguments)
    assert growth.references == 0, growth
