"""Packages that parts of the view need and that a user may not have."""

from __future__ import annotations

import importlib
from typing import Any

# Package -> its name as people write it, and the extra of moxPY that brings it along.
_EXTRAS = {
    "scipy": ("SciPy", "signal"),
    "pandas": ("pandas", "table"),
    "pyarrow": ("pyarrow", "table"),
    "openpyxl": ("openpyxl", "excel"),
    "polars": ("polars", "polars"),
    "xarray": ("xarray", "xarray"),
    "distributed": ("Dask", "dask"),
    "matplotlib": ("matplotlib", "plot"),
    "rerun": ("Rerun", "rerun"),
}


def require(package: str, part: str | None = None) -> Any:
    """The module `package`, or its submodule `part`, imported when it is needed.

    Raises
    ------
    ImportError
        The package is not installed; the message says how to install it.
    """
    try:
        return importlib.import_module(f"{package}.{part}" if part else package)
    except ModuleNotFoundError as error:
        if error.name != package:
            raise  # it is there, and something that it needs is not
        name, extra = _EXTRAS[package]
        message = f'this needs {name}: pip install "moxPY[{extra}]"'
        raise ImportError(message, name=package) from None
