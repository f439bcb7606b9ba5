"""Trials as data frames, data sets and recordings of other packages, and back.

============  =========================================================
tables        what goes into a frame, whichever package makes it
pandas        frames of pandas
polars        frames of polars
xarray        data sets of xarray
rerun         recordings of Rerun
rerun_scene   what moves in the laboratory, in such a recording
rerun_curves  channels and events in it
rerun_log     its time lines
updating      channels from a frame of pandas or polars
============  =========================================================
"""
