"""Which reader a sample is compared with, and why not with the other one."""

from __future__ import annotations

from collections.abc import Callable, Sequence
from dataclasses import dataclass

from support.independent_readers import read_with_c3d, read_with_ezc3d
from support.repairs import (
    as_it_is,
    with_parameters_from_the_header,
    with_the_points_of_the_header,
    without_the_broken_record,
)

EZC3D, C3D = read_with_ezc3d, read_with_c3d


@dataclass(frozen=True)
class Sample:
    name: str
    readers: Sequence[Callable]  # type: ignore[type-arg]
    excuse: str = ""  # why a reader is missing, and what may differ
    repair: Callable[[bytes], bytes] = as_it_is  # of the copy that the readers get
    marks_count: bool = True  # False: samples are there although all are marked as not seen
    has_labels: bool = True


NO_MIPS = "ezc3d does not read MIPS files"

SAMPLES = [
    Sample("2198928.c3d", (EZC3D, C3D)),
    Sample(
        "C3DRotationExample.c3d", (EZC3D,), "c3d takes the parameters for a single number and stops"
    ),
    Sample("Eb015pi.c3d", (EZC3D, C3D)),
    Sample("Eb015pr.c3d", (EZC3D, C3D)),
    Sample("Eb015si.c3d", (C3D,), NO_MIPS),
    Sample("Eb015sr.c3d", (C3D,), NO_MIPS),
    Sample("Eb015vi.c3d", (EZC3D, C3D)),
    Sample("Eb015vr.c3d", (EZC3D, C3D)),
    Sample("Optotrak.c3d", (EZC3D,), "c3d needs ANALOG:LABELS, which the file has not"),
    Sample("TYPE-2.C3D", (EZC3D, C3D)),
    Sample("TYPE-3.c3d", (EZC3D, C3D)),
    Sample("TYPE-4.C3D", (EZC3D, C3D)),
    Sample(
        "bad_parameter_section.c3d", (C3D,), "both stop at the record that is broken: c3d gets a"
        " copy that ends before it, with which ezc3d stops the whole process",
        without_the_broken_record,
    ),
    Sample(
        "basketball.c3d", (C3D,), "every sample is marked as not seen, and ezc3d gives no"
        " coordinates for such; c3d gives them beside the mark", marks_count=False,
    ),
    Sample("gait-pig.c3d", (EZC3D, C3D)),
    Sample(
        "kyowadengyo.c3d", (EZC3D, C3D), "c3d stops at the contradiction of POINT:USED and header,"
        " ezc3d believes POINT:USED: both get a copy in which it says what the header says",
        with_the_points_of_the_header,
    ),
    Sample(
        "phasespace_sample.c3d", (EZC3D, C3D), "the parameter section is empty: ezc3d finds"
        " nothing, c3d stops; both get a copy with the values of the header",
        with_parameters_from_the_header, has_labels=False,
    ),
    Sample("short.c3d", (EZC3D, C3D)),
    Sample(
        "type1.C3D", (C3D,), "ezc3d finds no analog channels in the file, which the header and"
        " ANALOG:USED count, and so reads the points from wrong places",
    ),
]  # fmt: skip
