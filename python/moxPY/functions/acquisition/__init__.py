"""Acquisitions as a whole: files, and the time base."""
