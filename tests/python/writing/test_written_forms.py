"""Files written for every processor, with real and with integer samples."""

from __future__ import annotations

import io
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial, read
from support.c3d_bytes import Analog, c3d_bytes
from support.sample_table import C3D, EZC3D, SAMPLES
from support.structure.written_file import WrittenFile
from support.ways import BY_TRIAL, Way, way_of
from writing.store_comparison import contents, store_differences
from writing.test_sample_round_trip import EXCUSED, mended_places, source_of
from writing.trials import FORMATS, rich_file
from writing.written import write

FindSample = Callable[[str], Path]

STRING, INT32 = 12, 6
PROCESSORS = {"intel": 84, "dec": 85, "mips": 86}
TWINS = {
    "pi": ("intel", "integer"), "pr": ("intel", "real"), "si": ("mips", "integer"),
    "sr": ("mips", "real"), "vi": ("dec", "integer"), "vr": ("dec", "real"),
}  # fmt: skip
HEADER = "Format/Header"
# Their -0.0 is a plain zero in DEC numbers.
UNSIGNED_ZEROS = ["Format/Metadata/FORCE_PLATFORM@CAL_MATRIX"]
# Their real samples are between the steps of the scales, which the file that is written refines.
ROUNDED = ["short.c3d", "type1.C3D"]

every_form = pytest.mark.parametrize(("processor", "storage"), FORMATS)
every_sample = pytest.mark.parametrize("entry", SAMPLES, ids=[entry.name for entry in SAMPLES])


def ask_for(acquisition: Any, processor: str, storage: str) -> None:
    """Puts the form of the next file beside what is known about the one that was read."""
    probe.retrieve_or_create_group(acquisition, HEADER)
    for name, kind, native, value in (
        ("WantedStorage", STRING, "string", storage),
        ("WantedProcessor", INT32, "int32", PROCESSORS[processor]),
    ):
        probe.create_attribute(acquisition, HEADER, name, kind, None)
        probe.write_attribute_vector(acquisition, HEADER, name, native, [value])


def written_as(
    acquisition: Any, path: Path, processor: str, storage: str, source: bytes | None = None
) -> WrittenFile:
    form = (PROCESSORS[processor], storage)
    options = {}
    if way_of(acquisition) is BY_TRIAL:
        options = {"processor": processor, "storage": storage}
    else:
        ask_for(acquisition, processor, storage)
    content = write(acquisition, path, source, EXCUSED, form, **options)
    return WrittenFile(content, *form)


def points_of(acquisition: Any) -> Any:
    matrix = _moxPY.moxGetPointsValues(acquisition)
    frames = int(_moxPY.moxGetPointFrameNumber(acquisition))
    return matrix.reshape(frames, -1, 3) if matrix.ndim else np.zeros((frames, 0, 3))


def analogs_of(acquisition: Any) -> Any:
    matrix = _moxPY.moxGetAnalogsValues(acquisition)
    return matrix if matrix.ndim else np.zeros((0, 0))


def analog_steps(file: WrittenFile) -> Any:
    scales = np.asarray(file.listed_values("ANALOG:SCALE"), float)
    scales = scales if len(scales) else np.ones(1)
    listed = np.resize(scales, file.channels) if len(scales) == 1 else scales[: file.channels]
    return np.abs(listed * file.scalar("ANALOG:GEN_SCALE", 1))


def assert_within(found: Any, expected: Any, allowed: Any) -> None:
    assert found.shape == expected.shape
    np.testing.assert_array_equal(np.isnan(found), np.isnan(expected))
    off = np.nan_to_num(np.abs(found - expected))
    assert (off <= allowed + 2e-7 * np.nan_to_num(np.abs(expected))).all()


def assert_same_samples(found: Any, expected: Any, file: WrittenFile) -> None:
    """Within half a step of integers; of reals, no further than a single is exact."""
    real = file.storage == "real"
    half_point = 0.0 if real else 0.5001 * file.scalar("POINT:SCALE")
    half_analog = 0.0 if real else 0.5001 * analog_steps(file)
    assert_within(points_of(found), points_of(expected), half_point)
    assert_within(analogs_of(found), analogs_of(expected), half_analog)


@every_form
@every_sample
def test_samples_come_back(
    sample: FindSample, tmp_path: Path, way: Way, entry: Any, processor: str, storage: str
):
    source, path = sample(entry.name), tmp_path / "written.c3d"
    acquisition = way.read(source)
    file = written_as(acquisition, path, processor, storage, source_of(source))
    again = way.read(path)
    ignored = [
        *mended_places(entry.name), f"{HEADER}/Groups@*", f"{HEADER}/Parameters@*",
        "Format/Data/*", "*@PointScale", *(UNSIGNED_ZEROS if processor == "dec" else []),
        *(["*/ANALOG@SCALE"] if storage == "integer" and entry.name in ROUNDED else []),
    ]  # fmt: skip
    before = way.read(source)
    assert store_differences(before, again, ignored, as_singles=True) == []
    assert_same_samples(again, before, file)


@every_form
@pytest.mark.parametrize(
    ("name", "reader"),
    [
        (entry.name, reader)
        for entry in SAMPLES
        for reader in (EZC3D, C3D)
        if (entry.name, reader) != ("C3DRotationExample.c3d", C3D)
    ],
)
def test_other_readers_see_the_same(
    sample: FindSample, tmp_path: Path, name: str, reader: Any, processor: str, storage: str
):
    if reader is EZC3D and processor == "mips":
        pytest.skip("ezc3d does not read MIPS files")
    if (name, reader, processor) == ("basketball.c3d", C3D, "dec"):
        pytest.skip("c3d reads the zero of a DEC file, here its ANALOG:RATE, as -1.7e38")
    source, path = sample(name), tmp_path / "written.c3d"
    acquisition = _moxPY.moxReadAcquisition(str(source))
    written_as(acquisition, path, processor, storage, source_of(source))
    recording, again = reader(path), _moxPY.moxReadAcquisition(str(path))
    np.testing.assert_allclose(recording.points, points_of(again), rtol=3e-7)
    analogs = analogs_of(again)
    if analogs.size:
        np.testing.assert_allclose(recording.analogs, analogs, rtol=1e-5, atol=1e-6)


@every_form
def test_rich_trials_come_back(tmp_path: Path, way: Way, processor: str, storage: str):
    for read_processor, read_storage in FORMATS:
        content = rich_file(read_processor, read_storage).to_bytes()
        (tmp_path / "source.c3d").write_bytes(content)
        acquisition = way.read(tmp_path / "source.c3d")
        path = tmp_path / "written.c3d"
        file = written_as(acquisition, path, processor, storage, content)
        again = way.read(path)
        ignored = ["Format/Data/Points", "Format/Data/Analog*", "*/Rotations*"]
        before = way.read(tmp_path / "source.c3d")
        assert store_differences(before, again, ignored, as_singles=True) == []
        assert_same_samples(again, before, file)


@pytest.mark.parametrize("wanted", TWINS)
@pytest.mark.parametrize("name", TWINS)
def test_a_twin_becomes_the_other(
    sample: FindSample, tmp_path: Path, way: Way, name: str, wanted: str
):
    """Six files of one trial; each becomes the values of the one that has the form."""
    twin = way.read(sample(f"Eb015{wanted}.c3d"))
    source = sample(f"Eb015{name}.c3d")
    acquisition = way.read(source)
    path = tmp_path / "written.c3d"
    file = written_as(acquisition, path, *TWINS[wanted], source.read_bytes())
    again = way.read(path)
    assert_same_samples(again, twin, file)


def known_samples(file: WrittenFile) -> bytes:
    """The numbers of all samples, but for the coordinates of points that were not seen."""
    table = file.frame_table
    assert table is not None
    points = table[:, : 4 * file.points].reshape(-1, 4)
    points[points[:, 3] < 0] = 0, 0, 0, -1
    return table.tobytes()


@every_sample
def test_integers_stay_the_integers_of_the_file(
    sample: FindSample, tmp_path: Path, way: Way, entry: Any
):
    source = sample(entry.name)
    acquisition = way.read(source)
    read = contents(acquisition)
    if read[f"{HEADER}@Storage"][2] != ["integer"]:
        pytest.skip("its samples are reals")
    if entry.name == "kyowadengyo.c3d":
        pytest.skip("its POINT:USED counts a point that is not there")
    number = int(np.ravel(read[f"{HEADER}@Processor"][2])[0])
    processor = next(name for name, known in PROCESSORS.items() if known == number)
    path = tmp_path / "written.c3d"
    file = written_as(acquisition, path, processor, "integer", source_of(source))
    before = WrittenFile(source_of(source), number, "integer")
    assert known_samples(file) == known_samples(before)


def test_without_a_wish_reals_of_intel_are_written(tmp_path: Path, way: Way):
    content = rich_file("dec", "integer").to_bytes()
    (tmp_path / "source.c3d").write_bytes(content)
    acquisition = way.read(tmp_path / "source.c3d")
    plain = write(acquisition, tmp_path / "plain.c3d", content)
    assert written_as(acquisition, tmp_path / "asked.c3d", "intel", "real").content == plain


def file_with(tmp_path: Path, positions: Any, values: Any, **options: Any) -> Any:
    analogs = {} if values is None else {"analogs": [Analog("EMG1", values, description="Arm")]}
    content = c3d_bytes({"A": positions}, point_descriptions=["Hand"], **analogs, **options)
    (tmp_path / "source.c3d").write_bytes(content)
    return _moxPY.moxReadAcquisition(str(tmp_path / "source.c3d"))


def test_coordinates_beyond_the_scale_get_another(tmp_path: Path):
    positions = np.array([[1.0, 2.0, -64000.0], [4.0, np.nan, 5.0], [0.25, 100.0, 7.0]])
    words = [3 * 256 + 40, -1, 255]  # residuals of 4.0 and 25.5
    acquisition = file_with(tmp_path, positions, None, residuals={"A": words})
    file = written_as(acquisition, tmp_path / "written.c3d", "mips", "integer")
    assert file.scalar("POINT:SCALE") == 2.0
    assert file.frame_table is not None
    expected = [[0, 1, -32000, 3 * 256 + 2], [0, 0, 0, -1], [0, 50, 4, 13]]
    assert file.frame_table.tolist() == expected


@pytest.mark.parametrize("value", [40000.0, -32769.0, np.inf, np.nan])
def test_a_value_that_no_integer_holds_is_refused(tmp_path: Path, value: float):
    values = np.array([1.0, value, 2.0])
    acquisition = file_with(tmp_path, np.ones((3, 3)), values)
    ask_for(acquisition, "intel", "integer")
    path = tmp_path / "written.c3d"
    with pytest.raises(RuntimeError, match="the analog channel 'EMG1' has a value"):
        _moxPY.moxWriteAcquisition(acquisition, str(path))
    assert not path.exists()


@every_form
def test_words_without_a_sign_stay_without_one(
    tmp_path: Path, way: Way, processor: str, storage: str
):
    values = np.array([0.0, 65535.0, 32768.0])
    acquisition = way.of(file_with(tmp_path, np.ones((3, 3)), values, analog_format="UNSIGNED"))
    file = written_as(acquisition, tmp_path / "written.c3d", processor, storage)
    again = way.read(tmp_path / "written.c3d")
    assert analogs_of(again).ravel().tolist() == values.tolist()
    assert file.storage == storage


@pytest.mark.parametrize("storage", ["integer", "real"])
@pytest.mark.parametrize("value", [2e38, -2e38, np.inf])
def test_what_dec_numbers_do_not_reach_is_refused(tmp_path: Path, value: float, storage: str):
    acquisition = file_with(tmp_path, np.ones((3, 3)), np.array([1.0, value, 2.0]))
    ask_for(acquisition, "dec", storage)
    path = tmp_path / "written.c3d"
    with pytest.raises(RuntimeError, match="the analog channel 'EMG1' has a value"):
        _moxPY.moxWriteAcquisition(acquisition, str(path))
    assert not path.exists()


def test_analog_values_get_the_finest_scale_where_theirs_rounds_them(
    tmp_path: Path, way: Way, new_log_lines: Callable[[], list[str]]
):
    values = np.array([1e-3, 4e-3, -5e-3])
    acquisition = way.of(file_with(tmp_path, np.ones((3, 3)), values))
    file = written_as(acquisition, tmp_path / "written.c3d", "intel", "integer")
    assert file.listed_values("ANALOG:SCALE") == [np.float32(5e-3 / 32000)]
    again = way.read(tmp_path / "written.c3d")
    np.testing.assert_allclose(analogs_of(again).ravel(), values, rtol=0, atol=5e-3 / 64000)
    said = "integers would round the analog channel 'EMG1', with its scale 1, in steps of 1; it is"
    assert any(said in line for line in new_log_lines())


def test_a_new_analog_channel_keeps_its_fractions():
    trial = Trial.new(frames=4, rate=100.0)
    trial.analogs["px"] = [0.125, 0.25, 0.375, -0.5]
    content = io.BytesIO()
    trial.write(content, storage="integer")
    found = read(content.getvalue()).analogs["px"].values
    np.testing.assert_allclose(found, trial.analogs["px"].values, rtol=0, atol=0.5 / 64000)


def test_what_is_rounded_to_the_integers_of_a_file_is_logged(
    tmp_path: Path, new_log_lines: Callable[[], list[str]]
):
    values = np.array([3.0, 1.0, 2.0])
    acquisition = file_with(tmp_path, np.ones((3, 3)), values, storage="integer")
    _moxPY.moxSetAnalogValues(acquisition, 0, np.array([[0.25], [1.0], [2.0]]))
    written_as(acquisition, tmp_path / "written.c3d", "intel", "integer")
    said = "the analog channel 'EMG1' is rounded to integers, in steps of 1"
    assert any(said in line for line in new_log_lines())
    again = _moxPY.moxReadAcquisition(str(tmp_path / "written.c3d"))
    assert analogs_of(again).ravel().tolist() == [0.0, 1.0, 2.0]
