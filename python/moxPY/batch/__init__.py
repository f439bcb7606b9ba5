"""Many files: which there are, one function over all of them, one table of all of them.

======  =====================================================
gather  files, folders and patterns as a list of files
======  =====================================================
"""

from __future__ import annotations

from .gather import gather

__all__ = ["gather"]
