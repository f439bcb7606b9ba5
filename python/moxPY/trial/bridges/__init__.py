"""Trials as data frames and data sets of other packages, and back.

=========  =========================================================
tables     what goes into a frame, whichever package makes it
pandas     frames of pandas
polars     frames of polars
xarray     data sets of xarray
updating   channels from a frame of pandas or polars
=========  =========================================================
"""
