"""Proxies of stores: ownership, deletion, chains, representation."""

from __future__ import annotations

import gc
import os
import re
from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.proxies import Shadow, deleted_handle, new_proxy

DOCUMENTATION = {
    "disown": "releases ownership of the pointer",
    "acquire": "acquires ownership of the pointer",
    "own": "returns/sets ownership of the pointer",
    "append": "appends another 'this' object",
    "next": "returns the next 'this' object",
}


def live_proxies() -> int:
    gc.collect()
    return sum(type(tracked) is type(new_proxy()) for tracked in gc.get_objects())


def test_representation_names_type_and_address():
    # As Python itself writes addresses: with capital letters on Windows.
    digit = "[0-9A-F]" if os.name == "nt" else "[0-9a-f]"
    assert re.fullmatch(
        rf"<Swig Object of type 'strata::data_store \*' at 0x{digit}+>", repr(new_proxy())
    )


@pytest.mark.parametrize(
    ("proxy", "name"),
    [(_moxPY.anvil_to_json({}), "anvil::json *"), (deleted_handle(), "strata::data_store *")],
)
def test_representation_of_other_proxies(proxy: Any, name: str):
    proxy = getattr(proxy, "this", proxy)
    assert repr(proxy).startswith(f"<Swig Object of type '{name}' at ")


def test_two_handles_have_two_addresses():
    first, second = new_proxy(), new_proxy()
    assert repr(first) != repr(second)


@pytest.mark.parametrize(("name", "text"), DOCUMENTATION.items())
def test_methods_are_documented(name: str, text: str):
    assert getattr(new_proxy(), name).__doc__ == text


def test_a_proxy_cannot_be_made_from_its_type():
    raised, _ = failure_of(type(new_proxy()))
    assert raised is TypeError


@pytest.mark.parametrize(
    "make", [_moxPY.new_data_store, _moxPY.moxNewAcquisition, lambda: _moxPY.anvil_to_json(1)]
)
def test_new_proxies_own_what_they_wrap(make: Any):
    handle = make()
    assert getattr(handle, "this", handle).own() is True


def test_ownership_is_released_and_acquired():
    proxy = new_proxy()
    assert proxy.disown() is None
    assert proxy.own() is False
    assert proxy.acquire() is None
    assert proxy.own() is True


def test_ownership_is_set_and_the_former_one_returned():
    proxy = new_proxy()
    assert proxy.own(False) is True
    assert proxy.own(1) is False
    assert proxy.own() is True


def test_a_disowned_handle_still_denotes_its_store():
    proxy = new_proxy()
    proxy.disown()
    probe.create_group(proxy, "kept")
    assert probe.list_groups(proxy, "") == ["kept"]
    proxy.acquire()


def test_ownership_takes_one_argument_at_most():
    text = "own expected at most 1 arguments, got 2"
    assert failure_of(new_proxy().own, True, False) == (TypeError, text)


def test_a_proxy_alone_has_no_next_one():
    assert new_proxy().next() is None


def test_the_appended_proxy_is_the_next_one():
    first, second = new_proxy(), new_proxy()
    assert first.append(second) is None
    assert first.next() is second
    assert second.next() is None


@pytest.mark.parametrize("value", [None, 1, "this", object(), Shadow(new_proxy())])
def test_nothing_but_a_proxy_is_appended(value: Any):
    proxy = new_proxy()
    text = "Attempt to append a non SwigPyObject"
    assert failure_of(proxy.append, value) == (TypeError, text)
    assert proxy.next() is None


def test_proxies_in_a_circle_are_collected():
    before = live_proxies()
    for _ in range(100):
        first, second = new_proxy(), new_proxy()
        first.append(second)
        second.append(first)
        alone = new_proxy()
        alone.append(alone)
    del first, second, alone
    assert live_proxies() == before


def test_a_long_chain_is_destroyed():
    first = last = new_proxy()
    for _ in range(200_000):
        last.append(new_proxy())
        last = last.next()
    del last
    before = live_proxies()
    del first
    assert live_proxies() == before - 200_001


def test_a_new_store_is_empty():
    assert probe.tree(new_proxy()) == {"attributes": {}, "sets": {}, "groups": {}}


def test_copies_of_a_store_share_the_tree():
    first = new_proxy()
    second = probe.take_store(first)
    probe.create_group(first, "shared")
    assert probe.list_groups(second, "") == ["shared"]


def test_a_shared_tree_outlives_the_handle_that_was_deleted():
    first = _moxPY.moxNewAcquisition(1, 10)
    second = probe.take_store(first)
    _moxPY.delete_data_store(first)
    assert _moxPY.moxGetPointFrameNumber(second) == 10.0


def test_deleting_returns_nothing():
    assert _moxPY.delete_data_store(_moxPY.new_data_store()) is None


def test_deleting_releases_ownership():
    proxy = new_proxy()
    _moxPY.delete_data_store(proxy)
    assert proxy.own() is False


def test_a_deleted_handle_is_a_null_reference():
    assert failure_of(_moxPY.moxGetPoints, deleted_handle()) == (
        ValueError,
        "invalid null reference in method 'moxGetPoints', argument 3 of type 'strata::data_store'",
    )


def test_a_handle_is_deleted_once():
    assert failure_of(_moxPY.delete_data_store, deleted_handle()) == (
        ValueError,
        "invalid null reference in method 'delete_data_store', "
        "argument 1 of type 'strata::data_store *'",
    )


def test_a_deleted_handle_that_is_acquired_again_owns_nothing():
    proxy = getattr(handle := deleted_handle(), "this", handle)
    proxy.acquire()
    del proxy, handle


def test_a_disowned_handle_is_deleted_too():
    proxy = new_proxy()
    proxy.disown()
    assert _moxPY.delete_data_store(proxy) is None


def test_a_function_becomes_an_instance_method():
    class Holder:
        method = _moxPY.SWIG_PyInstanceMethod_New(lambda self, value: (self, value))

    holder = Holder()
    assert holder.method(3) == (holder, 3)


def test_closing_and_deleting_an_acquisition_change_nothing():
    acquisition = _moxPY.moxNewAcquisition(2, 10, 1, 3)
    before = repr(probe.tree(acquisition))
    assert _moxPY.moxCloseAcquisition(acquisition) is None
    assert _moxPY.moxDeleteAcquisition(acquisition) is None
    assert repr(probe.tree(acquisition)) == before
