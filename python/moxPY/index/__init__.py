"""A table of many trials, a row a trial, in a Parquet file that is updated.

=======  ================================================================
row      what a row says of a trial
columns  names and types of the table
known    which files are as their rows say, and which are to be read
table    the file of the table
=======  ================================================================
"""

from __future__ import annotations

from .known import Plan, plan
from .row import row
from .table import Index, load, save

__all__ = ["Index", "Plan", "load", "plan", "row", "save"]
