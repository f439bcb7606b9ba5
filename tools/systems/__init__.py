"""Building and testing for systems that are not this one, with what PyPI and Debian offer.

Everything lies below one folder, by default build/systems, and is made once.

    steps.py            folders that are made once, or anew when their recipe changes
    wheels.py           wheels of this and of other platforms, unpacked by pip
    zig.py              the compiler for all of them
    windows_python.py   a CPython for Windows
    wine.py             runs it, in a Windows of its own
    windows.py          the folders and settings of building and testing for Windows
    test_windows.py     runs the tests of a Windows build

requirements/ says which wheels, with their hashes where the result is compiled with or shipped.
"""
