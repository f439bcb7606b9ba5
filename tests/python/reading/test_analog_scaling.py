"""value = (raw − offset) × scale × GEN_SCALE, in every way of writing these."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, real
from support.read_c3d import analogs_of, read_c3d


def read_channel(folder: Path, *channels: Analog, **options: Any) -> Any:
    acquisition = read_c3d(
        folder, analogs=list(channels), **{"storage": "integer", "samples_per_frame": 1, **options}
    )  # fmt: skip
    return analogs_of(acquisition)[str(channels[0].label)]


def test_the_worked_numbers(tmp_path: Path) -> None:
    values = read_channel(tmp_path, Analog("A", [2148, 1848], scale=0.005, offset=2048))
    np.testing.assert_allclose(values, [0.5, -1.0], rtol=1e-7)


def test_unsigned_samples_and_offset(tmp_path: Path) -> None:
    channel = Analog("A", [0x9000, 0, 65535], scale=0.5, offset=32768)
    values = read_channel(tmp_path, channel, analog_format="UNSIGNED", bits=16, gen_scale=2.0)
    np.testing.assert_array_equal(values, [4096.0, -32768.0, 32767.0])


def test_signed_samples_and_offset(tmp_path: Path) -> None:
    channel = Analog("A", [-28672, 0, 32767], scale=0.5, offset=-32768)
    values = read_channel(tmp_path, channel, analog_format="SIGNED", bits=12)
    np.testing.assert_array_equal(values, [2048.0, 16384.0, 32767.5])


@pytest.mark.parametrize("text", ["unsigned", "UNSIGNED  ", b"UNSIGNED\0"])
def test_the_format_in_other_spellings(tmp_path: Path, text: Any) -> None:
    channel = Analog("A", [65535, 1])
    np.testing.assert_array_equal(read_channel(tmp_path, channel, analog_format=text), [65535, 1])


def test_samples_are_signed_where_nothing_is_said(tmp_path: Path) -> None:
    np.testing.assert_array_equal(read_channel(tmp_path, Analog("A", [-1, 1])), [-1.0, 1.0])


def test_an_offset_of_32768_with_16_bits_is_unsigned(tmp_path: Path) -> None:
    # The middle of the unsigned range: as a signed offset it would be the end of the signed one.
    channel = Analog("A", [32768, 32769, 65535], offset=32768)
    np.testing.assert_array_equal(read_channel(tmp_path, channel, bits=16), [0.0, 1.0, 32767.0])


def test_a_negative_offset_keeps_its_sign(tmp_path: Path) -> None:
    channel = Analog("A", [0, 10], offset=-5, scale=2.0)
    np.testing.assert_array_equal(read_channel(tmp_path, channel), [10.0, 30.0])


def test_the_difference_may_exceed_16_bits(tmp_path: Path) -> None:
    channel = Analog("A", [-32768, 32767], offset=32767)
    np.testing.assert_array_equal(read_channel(tmp_path, channel), [-65535.0, 0.0])


@pytest.mark.parametrize("gen_scale", [-1.0, -0.25, 0.5, 8.0])
def test_the_general_scale_may_be_negative(tmp_path: Path, gen_scale: float) -> None:
    channel = Analog("A", [4, -8], scale=0.5)
    values = read_channel(tmp_path, channel, gen_scale=gen_scale)
    np.testing.assert_array_equal(values, [2 * gen_scale, -4 * gen_scale])


def test_the_information_has_the_channel_scale_alone(tmp_path: Path) -> None:
    channel = Analog("A", [4, -8], scale=0.1, offset=7)
    acquisition = read_c3d(tmp_path, analogs=[channel], samples_per_frame=1, gen_scale=-3.0)
    info = _moxPY.moxGetAnalog(acquisition, 0)[1]
    assert info["scale"] == float(np.float32(0.1))
    assert info["offset"] == 7.0


def test_a_channel_scale_may_be_negative_or_zero(tmp_path: Path) -> None:
    channels = [Analog("A", [4, -8], scale=-0.5), Analog("B", [4, -8], scale=0.0)]
    acquisition = read_c3d(tmp_path, analogs=channels, samples_per_frame=1)
    np.testing.assert_array_equal(analogs_of(acquisition)["A"], [-2.0, 4.0])
    np.testing.assert_array_equal(analogs_of(acquisition)["B"], [0.0, 0.0])


def test_real_samples_are_scaled_too(tmp_path: Path) -> None:
    channel = Analog("A", [2148.5, 1848.0], scale=0.5, offset=2048)
    values = read_channel(tmp_path, channel, storage="real", gen_scale=2.0)
    np.testing.assert_array_equal(values, [100.5, -200.0])


def test_an_unsigned_offset_of_real_samples(tmp_path: Path) -> None:
    channel = Analog("A", [40000.0, 32768.0], offset=32768)
    values = read_channel(tmp_path, channel, storage="real", analog_format="UNSIGNED")
    np.testing.assert_array_equal(values, [7232.0, 0.0])


def test_a_real_offset_is_converted(tmp_path: Path) -> None:
    offsets = {"ANALOG:OFFSET": real("OFFSET", [2.5])}
    values = read_channel(tmp_path, Analog("A", [4, -8]), parameters=offsets)
    np.testing.assert_array_equal(values, [1.5, -10.5])


@pytest.mark.parametrize(
    ("missing", "expected"),
    [
        ("ANALOG:SCALE", [-12.0, 12.0]),
        ("ANALOG:OFFSET", [4.0, 16.0]),
        ("ANALOG:GEN_SCALE", [-3.0, 3.0]),
        ("ANALOG:UNITS", [-6.0, 6.0]),
    ],
)
def test_what_is_missing_changes_nothing(
    tmp_path: Path, missing: str, expected: list[float]
) -> None:
    channel = Analog("A", [4, 16], scale=0.5, offset=10)
    values = read_channel(tmp_path, channel, gen_scale=2.0, parameters={missing: None})
    np.testing.assert_array_equal(values, expected)


def test_lists_shorter_than_the_channels(tmp_path: Path) -> None:
    channels = [Analog("A", [4, 16], 0.5, 10), Analog("B", [4, 16], 0.5, 10)]
    short = {"ANALOG:SCALE": real("SCALE", [0.5]), "ANALOG:OFFSET": real("OFFSET", [10.0])}
    acquisition = read_c3d(tmp_path, analogs=channels, samples_per_frame=1, parameters=short)
    np.testing.assert_array_equal(analogs_of(acquisition)["A"], [-3.0, 3.0])
    np.testing.assert_array_equal(analogs_of(acquisition)["B"], [4.0, 16.0])


@pytest.mark.parametrize("per_frame", [1, 2, 5, 20])
def test_samples_of_a_frame_are_in_time_order(tmp_path: Path, per_frame: int) -> None:
    first, second = np.arange(60), 1000 - np.arange(60)
    acquisition = read_c3d(
        tmp_path, analogs={"A": first, "B": second}, samples_per_frame=per_frame, storage="integer"
    )  # fmt: skip
    np.testing.assert_array_equal(analogs_of(acquisition)["A"], first)
    np.testing.assert_array_equal(analogs_of(acquisition)["B"], second)
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 100.0 * per_frame
