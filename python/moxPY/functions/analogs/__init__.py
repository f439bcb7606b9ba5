"""Analog channels: reading, adding, removing and describing them."""
