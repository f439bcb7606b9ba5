"""Names, order and documentation of the module's functions."""

from __future__ import annotations

import _moxPY
import pytest
from support.interface import FUNCTIONS, REGISTERED, Function

RELOAD_DOCUMENTATION = (
    " Unload all plugins and load the ones found in the plugins path. This function is usefull in"
    " case you added new plugins since the loading of the package. Notes: In case you want to"
    " replace a plugin by a newer version, you have first to use the unload() fonction. Your"
    " Operating System may lock the plugin files once loaded."
)

functions = pytest.mark.parametrize("function", REGISTERED, ids=str)


def test_functions_are_registered_in_the_order_of_the_interface():
    registered = [name for name, value in vars(_moxPY).items() if callable(value)]
    own = [name for name in registered if not name.startswith("__")]
    assert own == [function.name for function in FUNCTIONS if function.name in own]


def test_reload_is_documented():
    assert _moxPY.reload.__doc__ == RELOAD_DOCUMENTATION


@functions
def test_no_other_function_has_a_docstring(function: Function):
    if function.name != "reload":
        assert getattr(_moxPY, function.name).__doc__ is None


@functions
def test_keyword_arguments_are_refused(function: Function):
    with pytest.raises(TypeError, match="takes no keyword arguments"):
        getattr(_moxPY, function.name)(acquisition=1)


def test_version():
    assert _moxPY.moxGetVersion() == "2025.3.2"
