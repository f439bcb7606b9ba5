"""A written file as the rules look at it: its counts, its lists and its sections."""

from __future__ import annotations

import itertools
from collections.abc import Iterator
from dataclasses import dataclass
from functools import cached_property
from typing import Any

import numpy as np
from numpy.typing import NDArray

from support.stored_file import BLOCK, CHARACTER, REAL, Record, StoredFile

LARGEST_WORD = 65535
LONGEST_LIST = 255
REALS_OF_A_ROTATION = 17

Deviations = Iterator[str]


@dataclass
class WrittenFile(StoredFile):
    """Counts come from the parameters, which are the ones that readers believe."""

    wanted_processor: int = 84
    storage: str = "real"

    @property
    def sample_bytes(self) -> int:
        return 4 if self.storage == "real" else 2

    @property
    def points(self) -> int:
        return self.count("POINT:USED")

    @property
    def channels(self) -> int:
        return self.count("ANALOG:USED")

    @property
    def samples_per_frame(self) -> int:
        return self.word(10)

    @property
    def rotations(self) -> int:
        return self.count("ROTATION:USED")

    @property
    def rotation_ratio(self) -> int:
        return self.count("ROTATION:RATIO")

    @cached_property
    def frames(self) -> int:
        if self.count("POINT:LONG_FRAMES"):
            return self.count("POINT:LONG_FRAMES")
        frames = self.parameters.get("POINT:FRAMES")
        stored = self.count("POINT:FRAMES")
        if stored == LARGEST_WORD and frames and frames.type != REAL:
            return self.trial_frames or stored
        return stored

    @property
    def trial_frames(self) -> int | None:
        """What the fields of the trial count; None without them."""
        fields = [self.values(f"TRIAL:ACTUAL_{end}_FIELD") for end in ("START", "END")]
        if any(len(words) < 2 for words in fields):
            return None
        first, last = (int(words[0]) + (int(words[1]) << 16) for words in fields)
        return last - first + 1

    @property
    def trial_first(self) -> int | None:
        words = self.values("TRIAL:ACTUAL_START_FIELD")
        return int(words[0]) + (int(words[1]) << 16) if len(words) >= 2 else None

    @property
    def frame_numbers(self) -> int:
        return 4 * self.points + self.channels * self.samples_per_frame

    @property
    def data_offset(self) -> int:
        return (self.count("POINT:DATA_START") - 1) * BLOCK

    @property
    def data_end(self) -> int:
        return self.data_offset + self.sample_bytes * self.frame_numbers * self.frames

    @property
    def rotation_offset(self) -> int:
        """Where the rotations belong: in the block behind the samples."""
        return -(-self.data_end // BLOCK) * BLOCK

    @property
    def rotation_bytes(self) -> int:
        samples = self.frames * self.rotation_ratio * self.rotations
        return 4 * REALS_OF_A_ROTATION * samples

    @cached_property
    def frame_table(self) -> NDArray[np.float64] | None:
        """(frame, number) as stored, integers with their sign; None when the file is too short."""
        if self.data_offset < 0 or self.data_end > len(self.content):
            return None
        data = self.content[self.data_offset : self.data_end]
        if self.storage == "real":
            numbers = self.reals(data)
        else:
            numbers = np.frombuffer(data, f"{self.byte_order}i2").astype(np.float64)
        return numbers.reshape(self.frames, self.frame_numbers)

    def numbered(self, path: str) -> list[tuple[str, Record]]:
        """The parameter and its continuations NAME2, NAME3, ... as far as they follow."""
        names = itertools.chain([path], (f"{path}{number}" for number in itertools.count(2)))
        found = itertools.takewhile(lambda name: name in self.parameters, names)
        return [(name, self.parameters[name]) for name in found]

    def listed_texts(self, path: str) -> list[str]:
        return [text for name, _ in self.numbered(path) for text in self.texts(name)]

    def listed_values(self, path: str) -> list[Any]:
        return [value for name, _ in self.numbered(path) for value in self.values(name)]


def entries_of(record: Record) -> int:
    """How many entries a list has: its last dimension; a text without one is a single entry."""
    if len(record.dims) == (1 if record.type == CHARACTER else 0):
        return 1
    return record.dims[-1]


def as_single(value: float) -> float:
    return float(np.float32(value))
