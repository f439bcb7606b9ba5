"""Points: reading, adding, removing and describing them, and their values."""
