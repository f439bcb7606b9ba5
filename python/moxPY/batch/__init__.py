"""Many files: which there are, one function over all of them, one table of all of them.

============  ==================================================================
gather        files, folders and patterns as a list of files
map_files     what a user calls: a function over files
results       what comes back, file by file
work          what is done with one file, wherever that is
line          files that are worked on, each taken in its turn
staff         who works: threads, processes, an executor of the user
progress      the bar on a terminal
collect       what a user calls: one table of many files
tables        what a function gives of a trial, as rows of a table
blocks        channels of many files on their way into a table
stacking      what comes of the files, brought to a sink in few tables
schema        one schema for the tables of many files
sinks         where the tables go: memory, or a file
group_writer  a file that is written beside other work
============  ==================================================================
"""

from __future__ import annotations

from .collect import collect
from .gather import gather
from .map_files import map_files
from .results import Result, Results

__all__ = ["Result", "Results", "collect", "gather", "map_files"]
