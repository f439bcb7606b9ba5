"""The header block against the parameters."""

from __future__ import annotations

import numpy as np

from support.structure.written_file import LARGEST_WORD, Deviations, WrittenFile, as_single

MOST_EVENTS = 18
EVENT_TIMES, EVENT_FLAGS, EVENT_LABELS = 153, 189, 199
KEY = 12345


def marks(file: WrittenFile) -> Deviations:
    if file.content[:2] != b"\x02\x50":
        yield f"header word 1: {file.content[:2].hex(' ')}, not 02 50"
    if file.word(148) or file.word(149):
        yield "header words 148 and 149: a section of labels and ranges that is not there"
    if file.word(150) != KEY:
        yield f"header word 150: {file.word(150)}, not {KEY}"
    for number in (152, 198):
        if file.word(number):
            yield f"header word {number}: not 0"


def copies_of_parameters(file: WrittenFile) -> Deviations:
    expected = {
        2: file.points,
        3: file.channels * file.samples_per_frame,
        9: file.count("POINT:DATA_START"),
    }
    for number, value in expected.items():
        if file.word(number) != value:
            yield f"header word {number}: {file.word(number)}, the parameters say {value}"
    for number, path in ((7, "POINT:SCALE"), (11, "POINT:RATE")):
        if file.header_real(number) != file.scalar(path):
            yield (
                f"header words {number} and {number + 1}: {file.header_real(number)}, {path} is"
                f" {file.scalar(path)}"
            )
    if file.channels and file.samples_per_frame == 0:
        yield "header word 10: 0 samples a frame of channels that are there"


def frame_range(file: WrittenFile) -> Deviations:
    """Numbers beyond 16 bits are told by the trial's fields; the header says 1 and 65535 then."""
    first, last = file.word(4), file.word(5)
    if first == 0:
        yield "header word 4: 0, frames count from 1"
        return
    expected = min(first + file.frames - 1, LARGEST_WORD)
    true_last = (file.trial_first or first) + file.frames - 1
    if last != expected and not (true_last > LARGEST_WORD and (first, last) == (1, LARGEST_WORD)):
        yield f"header word 5: {last}, not {expected}: {file.frames} frames from {first} on"


def events(file: WrittenFile) -> Deviations:
    count = file.word(151)
    if count > MOST_EVENTS:
        yield f"header word 151: {count} events"
        return
    fields = (("time", EVENT_TIMES, 4), ("status", EVENT_FLAGS, 1), ("label", EVENT_LABELS, 4))
    for what, word, size in fields:
        start = 2 * (word - 1)
        unused = file.content[start + size * count : start + size * MOST_EVENTS]
        if any(unused):
            yield f"header events: a {what} behind the last of {count} events"
    times = [file.header_real(EVENT_TIMES + 2 * number) for number in range(count)]
    if not np.isfinite(times).all():
        yield f"header events: times {times}"
    start = 2 * (EVENT_LABELS - 1)
    labels = file.content[start : start + 4 * count]
    if any(byte not in range(32, 127) for byte in labels):
        yield f"header events: labels {labels!r}"


def reserved_words(file: WrittenFile) -> Deviations:
    for first, last in ((13, 147), (235, 256)):
        if any(file.content[2 * first - 2 : 2 * last]):
            yield f"header words {first} to {last}: not 0"


def rates(file: WrittenFile) -> Deviations:
    rate = file.scalar("POINT:RATE")
    if not (np.isfinite(rate) and rate > 0):
        yield f"POINT:RATE: {rate}"
    analog_rate = file.scalar("ANALOG:RATE")
    expected = as_single(rate * file.samples_per_frame)
    if "ANALOG:RATE" in file.parameters and analog_rate != expected:
        yield f"ANALOG:RATE: {analog_rate}, not {expected}"
