"""Metadata: reading, adding, changing and removing them, and analysis parameters."""
