"""Every processor with both storage modes."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog
from support.read_c3d import analogs_of, points_of, read_c3d

NAN = np.nan
POINTS = {
    "LASI": [[1.25, -20.5, 950.25], [NAN, NAN, NAN], [0.25, -0.25, 0.0]],
    "RASI": [[-8191.75, 8191.75, 0.0], [0.5, 0.75, 1.0], [-1.0, -2.0, -3.0]],
}
# Two samples a frame; exact in both storage modes.
ANALOGS = [
    Analog("Fz1", [100, -200, 300, 32767, -32768, 0], scale=0.5, offset=100, units="N"),
    Analog("EMG", [1, 2, 3, 4, 5, 6], scale=-0.25, offset=-2, units="V"),
]

every_format = pytest.mark.parametrize(
    ("processor", "storage"),
    [
        (processor, storage)
        for processor in ("intel", "dec", "mips")
        for storage in ("integer", "real")
    ],
)


@every_format
def test_point_coordinates_are_exact(tmp_path: Path, processor: str, storage: str) -> None:
    acquisition = read_c3d(tmp_path, POINTS, processor=processor, storage=storage, scale=0.25)
    points = points_of(acquisition)
    np.testing.assert_array_equal(points["LASI"], POINTS["LASI"])
    np.testing.assert_array_equal(points["RASI"], POINTS["RASI"])


@every_format
def test_analog_samples_are_exact(tmp_path: Path, processor: str, storage: str) -> None:
    acquisition = read_c3d(
        tmp_path, POINTS, analogs=ANALOGS, samples_per_frame=2, gen_scale=0.25,
        processor=processor, storage=storage, scale=0.25,
    )  # fmt: skip
    analogs = analogs_of(acquisition)
    # (raw - offset) * scale * 0.25
    np.testing.assert_array_equal(analogs["Fz1"], (np.array(ANALOGS[0].raw) - 100.0) * 0.125)
    np.testing.assert_array_equal(analogs["EMG"], (np.array(ANALOGS[1].raw) + 2.0) * -0.0625)


@every_format
def test_analogs_do_not_disturb_the_points(tmp_path: Path, processor: str, storage: str) -> None:
    acquisition = read_c3d(
        tmp_path, POINTS, analogs=ANALOGS, samples_per_frame=2,
        processor=processor, storage=storage, scale=0.25,
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["RASI"], POINTS["RASI"])


@every_format
def test_scaled_coordinates_agree_to_a_single(tmp_path: Path, processor: str, storage: str) -> None:
    values = np.array([[1234.5, -0.1, 0.3], [99.9, -777.7, 3.2]])
    acquisition = read_c3d(
        tmp_path, {"A": values}, processor=processor, storage=storage, scale=0.1
    )  # fmt: skip
    np.testing.assert_allclose(points_of(acquisition)["A"], values, rtol=1e-6)


@every_format
@pytest.mark.parametrize("word", [-1, -2, -255, -32768])
def test_a_negative_fourth_word_makes_the_sample_nan(
    tmp_path: Path, processor: str, storage: str, word: int
) -> None:
    words = [0, word, 773]
    acquisition = read_c3d(
        tmp_path, {"A": [[1, 2, 3], [4, 5, 6], [7, 8, 9]]}, residuals={"A": words},
        processor=processor, storage=storage, scale=0.5,
    )  # fmt: skip
    expected = [[1.0, 2.0, 3.0], [NAN, NAN, NAN], [7.0, 8.0, 9.0]]
    np.testing.assert_array_equal(points_of(acquisition)["A"], expected)


@every_format
@pytest.mark.parametrize("word", [0, 1, 127, 128, 255, 256, 773, 32767])
def test_every_other_fourth_word_is_valid(
    tmp_path: Path, processor: str, storage: str, word: int
) -> None:
    # The residual byte is unsigned: 128 to 255 are no negative residuals.
    acquisition = read_c3d(
        tmp_path, {"A": [[1, 2, 3], [4, 5, 6]]}, residuals={"A": [word, word]},
        processor=processor, storage=storage, scale=0.5,
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["A"], [[1, 2, 3], [4, 5, 6]])


@every_format
def test_reals_and_words_of_the_parameters(tmp_path: Path, processor: str, storage: str) -> None:
    acquisition = read_c3d(
        tmp_path, POINTS, analogs=ANALOGS, samples_per_frame=2, rate=59.94006, first_frame=258,
        processor=processor, storage=storage, scale=0.25, bits=14,
    )  # fmt: skip
    # The file holds a single.
    assert _moxPY.moxGetPointFrequency(acquisition) == float(np.float32(59.94006))
    assert _moxPY.moxGetAnalogFrequency(acquisition) == float(np.float32(2 * 59.94006))
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 3.0
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 6.0
    assert _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition) == 2.0
    assert _moxPY.moxGetAnalogResolution(acquisition) == 14.0


@pytest.mark.parametrize(
    ("single", "value"),
    [
        (b"\x80\x40\x00\x00", 1.0),
        (b"\x80\xc0\x00\x00", -1.0),
        (b"\x70\x43\x00\x00", 60.0),
        (b"\xcc\x3e\xcd\xcc", float(np.float32(0.1))),
        (b"\x49\x41\xdb\x0f", float(np.float32(3.14159274))),
        (b"\x00\x00\x34\x12", 0.0),  # exponent 0 is zero, whatever the fraction
        (b"\x80\x00\x00\x00", 2.0**-128),  # the smallest
        (b"\xff\x7f\xff\xff", 2.0**127 * (1 - 2.0**-24)),  # the largest
    ],
)
def test_dec_reals_by_their_bytes(tmp_path: Path, single: bytes, value: float) -> None:
    zero = bytes(4)
    data = single + zero + zero + zero + bytes(512 - 16)
    acquisition = read_c3d(tmp_path, {"A": [[0, 0, 0]]}, processor="dec", data=data)
    assert points_of(acquisition)["A"].tolist() == [value, 0.0, 0.0]


def test_a_dec_reserved_operand_is_no_coordinate(tmp_path: Path) -> None:
    reserved = b"\x00\x80\x00\x00" + bytes(12)
    acquisition = read_c3d(
        tmp_path, {"A": [[0, 0, 0]] * 2}, processor="dec", data=bytes(16) + reserved + bytes(480)
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["A"], [[0, 0, 0], [NAN, NAN, NAN]])
