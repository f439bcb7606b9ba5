"""The ways in which the tests of this folder read and write."""

from support.ways import way

__all__ = ["way"]
