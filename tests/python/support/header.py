"""Bytes of the header block."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from dataclasses import dataclass

from .number_formats import NumberFormat
from .parameters import Text, encoded

# Numbers of the 16-bit header words, which the format counts from 1.
WORDS = {
    "point_count": 2,
    "analog_values": 3,
    "first_frame": 4,
    "last_frame": 5,
    "max_gap": 6,
    "data_start": 9,
    "samples_per_frame": 10,
    "label_range_key": 148,
    "label_range_block": 149,
    "event_key": 150,
    "event_count": 151,
}
REALS = {"scale": 7, "rate": 11}
BYTES = {"parameter_block": 0, "key": 1}

EVENT_TIMES, EVENT_FLAGS, EVENT_LABELS = 153, 189, 199
FOUR_CHARACTER_LABELS = 12345


@dataclass(frozen=True)
class HeaderEvent:
    label: Text  # four characters
    time: float  # seconds after the first stored frame
    flag: int = 1


def word_offset(word: int) -> int:
    return 2 * (word - 1)


def header_bytes(
    fields: Mapping[str, float],
    events: Sequence[HeaderEvent],
    numbers: NumberFormat,
    patches: Mapping[int, bytes],
) -> bytes:
    """512 bytes: named fields, events, then `patches` (byte offset: bytes) over everything."""
    header = bytearray(512)

    def put(offset: int, content: bytes) -> None:
        header[offset : offset + len(content)] = content

    for name, value in fields.items():
        if name in BYTES:
            put(BYTES[name], bytes([int(value)]))
        elif name in REALS:
            put(word_offset(REALS[name]), numbers.reals(value))
        else:
            put(word_offset(WORDS[name]), numbers.words(value))
    put(word_offset(EVENT_TIMES), numbers.reals([event.time for event in events]))
    put(word_offset(EVENT_FLAGS), bytes(event.flag for event in events))
    labels = b"".join(encoded(event.label).ljust(4)[:4] for event in events)
    put(word_offset(EVENT_LABELS), labels)
    for offset, content in patches.items():
        put(offset, content)
    return bytes(header)
