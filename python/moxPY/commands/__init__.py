"""The command line: ``moxpy``, and ``python -m moxPY``.

A command is a file of its name, which is imported when it is called; the others are what commands
share:

============  ================================================================
main          a call from its words to its exit code
program       which commands there are
parameters    what several commands take, and how texts become values
parse         what is typed behind options: texts that become values
each_file     one function over all files, one line for one that fails
reasons       why a file failed, in one line
outputs       where results lie, and that nothing is overwritten unasked
lines         what people read: on a terminal wrapped, in a pipe not
json_array    a JSON array on standard output
info          what files hold
info_rows     the rows that ``info`` shows
view          a trial in motion
check         what may be wrong with trials
diff          what tells two files apart
convert       files of other formats
conversion    what ``convert`` does with one file, on this machine or another
report        reports of trials
workers       workers of a Dask scheduler, where one machine is not enough
index         a table of many trials
edit          changed copies of files
edits         what ``edit`` changes, in the order in which it does
plot          pictures of trials
pictures      what ``plot`` does with one file
set_entry     giving an entry of the metadata the value that was typed
============  ================================================================
"""

from __future__ import annotations

from .main import main

__all__ = ["main"]
