"""The three ways in which a C3D file writes its 16-bit words and its reals."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

Bits = NDArray[Any]


@dataclass(frozen=True)
class NumberFormat:
    """How one processor stores numbers; arrays of bits lie in memory as they lie in the file."""

    processor: int
    byte_order: str
    vax_reals: bool = False

    def word_bits(self, values: ArrayLike) -> Bits:
        """16-bit words of integers; signed and unsigned values both fit, higher bits are lost."""
        words = np.asarray(values).astype(np.int64) & 0xFFFF
        return np.asarray(words, dtype=f"{self.byte_order}u2")

    def real_bits(self, values: ArrayLike) -> Bits:
        """32-bit reals."""
        if self.vax_reals:
            return vax_bits(values)
        singles = np.asarray(values, dtype=np.float64).astype(f"{self.byte_order}f4")
        return singles.view(f"{self.byte_order}u4")

    def words(self, values: ArrayLike) -> bytes:
        return self.word_bits(values).tobytes()

    def reals(self, values: ArrayLike) -> bytes:
        return self.real_bits(values).tobytes()


NUMBER_FORMATS = {
    "intel": NumberFormat(84, "<"),
    "dec": NumberFormat(85, "<", vax_reals=True),
    "mips": NumberFormat(86, ">"),
}


def vax_bits(values: ArrayLike) -> Bits:
    """F_floating: sign, exponent excess 128, 0.1f mantissa; the high word comes first.

    Numbers too small become 0; numbers too large, infinities and NaN do not exist: ValueError.
    """
    numbers = np.asarray(values, dtype=np.float64)
    if not np.all(np.isfinite(numbers)):
        raise ValueError("F_floating has neither NaN nor infinity")
    fraction, exponent = np.frexp(np.abs(numbers))
    mantissa = np.rint(fraction * 2.0**24).astype(np.int64)
    # A mantissa rounded up to 1.0 is 0.5 of the next power of two.
    carried = mantissa == 1 << 24
    mantissa = np.where(carried, 1 << 23, mantissa)
    biased = exponent.astype(np.int64) + 128 + carried
    if np.any(biased > 255):
        raise ValueError("F_floating ends below 2**127")
    sign = np.signbit(numbers).astype(np.int64)
    bits = sign << 31 | biased << 23 | (mantissa & 0x7FFFFF)
    bits = np.where((biased < 1) | (numbers == 0), 0, bits)
    return np.asarray(bits >> 16 | (bits & 0xFFFF) << 16, dtype="<u4")
