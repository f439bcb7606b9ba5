"""Building and testing for systems that are not this one, with what PyPI and Debian offer.

Everything lies below one folder, by default build/systems, and is made once.

    steps.py            folders that are made once, or anew when their recipe changes
    wheels.py           wheels of this and of other platforms, unpacked by pip
    zig.py              the compiler for all of them
    windows_python.py   CPython for Windows
    wine_complex.py     functions of the C runtime that Wine has not
    wine.py             runs it, in a Windows of its own
    windows.py          the folders and settings of building and testing for Windows
    test_windows.py     runs the tests of a Windows build
    linux.py            the settings of building for Linux: processor, old C library, Python
    aarch64.py          a CPython for 64-bit ARM, emulated
    test_aarch64.py     runs the tests of a build for it
    pack_wheel.py       a wheel out of a build tree
    audit.py            what a wheel for Linux asks of a system
    audit_windows.py    what one for Windows asks
    try_wheel.py        the minimal tests with a wheel and nothing else
    try_windows_wheel.py  the same under Wine
    make_wheels.py      all of them

requirements/ says which wheels, with their hashes where the result is compiled with or shipped.
"""
