"""The rules that a written C3D file has to keep, one subject a module."""
