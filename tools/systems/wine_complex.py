"""Complex functions for extension modules under Wine 8, whose C runtime stops a program at them.

NumPy and SciPy import them from a library of the system. For tests they are changed to import all
that they have from there from a library of ours, which has those functions by the compiler's own C
library and passes everything else on.
"""

from __future__ import annotations

import re
from pathlib import Path

import pefile

SYSTEM = "api-ms-win-crt-math-l1-1-0.dll"
# A name that is put in place of the other.
OURS = "mox-cx-win-crt-math-l1-1-0.dll"
assert len(SYSTEM) == len(OURS)
# What the system's library has in all, by the compiler's description.
DESCRIPTION = Path(
    "package", "ziglang", "lib", "libc", "mingw", "lib-common",
    "api-ms-win-crt-math-l1-1-0.def.in",
)  # fmt: skip

# Their names in C++; in C they begin with a "c".
TO_COMPLEX = (
    *("acos", "acosh", "asin", "asinh", "atan", "atanh", "cos", "cosh", "exp", "log", "proj"),
    *("sin", "sinh", "sqrt", "tan", "tanh"),
)
TO_REAL = ("abs", "arg", "imag", "real")

# Structures go the way that the C runtime's own types for complex numbers go.
SOURCE = """\
#include <complex>
template <class T> struct number { T real, imag; };
template <class T> std::complex<T> read(number<T> z) { return {z.real, z.imag}; }
template <class T> number<T> told(std::complex<T> z) { return {z.real(), z.imag()}; }
#define FOR_BOTH(define, name, function) \\
    define(double, name, function) define(float, name##f, function)
#define TO_COMPLEX(T, name, function) \\
    extern "C" number<T> ours_##name(number<T> z) { return told(std::function(read(z))); }
#define TO_REAL(T, name, function) \\
    extern "C" T ours_##name(number<T> z) { return std::function(read(z)); }
extern "C" number<double> ours_cpow(number<double> z, number<double> w) {
    return told(std::pow(read(z), read(w)));
}
extern "C" number<float> ours_cpowf(number<float> z, number<float> w) {
    return told(std::pow(read(z), read(w)));
}
FOR_BOTH(TO_COMPLEX, conj, conj)
"""
SOURCE += "".join(f"FOR_BOTH(TO_COMPLEX, c{name}, {name})\n" for name in TO_COMPLEX)
SOURCE += "".join(f"FOR_BOTH(TO_REAL, c{name}, {name})\n" for name in TO_REAL)

COMPLEX = {
    name + kind
    for name in ("conj", "cpow", *(f"c{name}" for name in (*TO_COMPLEX, *TO_REAL)))
    for kind in ("", "f")
}


def definition(programs: Path) -> str:
    """What our library exports, in the linker's words."""
    described = (programs.parent / DESCRIPTION).read_text(encoding="utf-8")
    # Some stand in a condition: "F_NON_I386(log10f)".
    names = set(re.findall(r"^(?:F_\w+\()?(\w+)", described, re.MULTILINE))
    names -= {"LIBRARY", "EXPORTS"}
    lines = [f"{name}=ours_{name}" for name in COMPLEX]
    lines += [f"{name}=ucrtbase.{name}" for name in names - COMPLEX]
    return "\n".join([f"LIBRARY {OURS}", "EXPORTS", *sorted(lines)]) + "\n"


def with_ours(content: bytes) -> bytes:
    """The library or module, importing from our library what it did from the system's."""
    image = pefile.PE(data=content, fast_load=True)
    image.parse_data_directories(pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_IMPORT"])
    for entry in getattr(image, "DIRECTORY_ENTRY_IMPORT", []):
        names = {each.name.decode() for each in entry.imports if each.name}
        if entry.dll.decode() == SYSTEM and names & COMPLEX:
            place = image.get_offset_from_rva(entry.struct.Name)
            return content[:place] + OURS.encode() + content[place + len(OURS) :]
    return content


def change_packages(folder: Path) -> None:
    for path in folder.rglob("*"):
        if path.suffix in {".pyd", ".dll"}:
            content = path.read_bytes()
            changed = with_ours(content)
            if changed != content:
                path.write_bytes(changed)
