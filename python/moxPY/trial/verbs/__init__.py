"""Verbs: what makes another trial of a trial, and leaves it as it was.

Each is bound as a method of `Trial` and stands in the file of its name:

=========  ========================
crop       a stretch of the frames
resample   another rate
fill_gaps  places for lost markers
filter     slower or faster parts
rotated    other axes
in_units   other units
merged     channels of another trial
=========  ========================
"""
