"""Force platforms, and rotations of segments."""
