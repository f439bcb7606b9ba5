"""What every function does to an acquisition, without the module under test.

`Acquisition` in `acquisition` has a method for each function, of the same name.
"""
