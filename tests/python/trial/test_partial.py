"""Reading a part of a file: what is there is exact, what is not is told, and nothing is lost."""

from __future__ import annotations

import copy
import io
import pickle
from collections.abc import Callable
from itertools import product
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import Analog, C3DFile, Event, Platform, c3d_bytes
from support.memory import address_space, under_a_sanitizer
from support.page_content import content_in
from support.read_c3d import track
from support.sample_table import SAMPLES
from support.store_tree import node, snapshot

KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")
POINTS = KINDS[:-1]
FRAMES = 7
CORNERS = [[600, 400, 0], [0, 400, 0], [0, 0, 0], [600, 0, 0]]
ANALOGS = "Format/Data/AnalogsExport"
EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


def content(**options: Any) -> bytes:
    """A file with everything: kinds in turns, a label twice, one without, gaps, rotations."""
    seen = track(FRAMES).astype(float)
    gap = seen.copy()
    gap[2:4] = np.nan
    points = [
        ("LASI", np.column_stack([seen, np.arange(FRAMES) * 256 + 3])),
        ("LKnee", track(FRAMES, 40)),
        ("", track(FRAMES, 50)),
        ("LForce", gap),
        ("RASI", gap),
        ("LMoment", track(FRAMES, 60)),
        ("LASI", track(FRAMES, 70)),
        ("RKnee", gap),
        ("LPower", track(FRAMES, 80)),
    ]
    raw = np.arange(FRAMES * 3)
    analogs = [
        Analog(label, raw + 7 * index, scale=0.5, offset=index, units="N")
        for index, label in enumerate(["Fx", "Fy", "Fz", "Mx", "My", "Mz", "EMG"])
    ]
    transforms = np.tile(np.eye(4), (FRAMES, 1, 1))
    return c3d_bytes(
        points,
        **{
            "analogs": analogs,
            "samples_per_frame": 3,
            "first_frame": 5,
            "point_descriptions": [f"point {index}" for index in range(len(points))],
            "platforms": [Platform(corners=CORNERS)],
            "events": [Event("Left", "Foot Strike", 0.06)],
            "rotations": {"pelvis": transforms, "thorax": transforms},
            "parameters": {
                "POINT:ANGLES": ["LKnee", "RKnee"],
                "POINT:FORCES": ["LForce"],
                "POINT:MOMENTS": ["LMoment"],
                "POINT:POWERS": ["LPower"],
            },
        }
        | options,
    )


CONTENT = content()
PARTS = [
    "markers",
    ("markers", "analogs"),
    ("angles", "powers"),
    "points",
    "analogs",
    "rotations",
    (),
]


def kinds_of(only: Any) -> set[str]:
    """What `only` asks for, each kind by itself."""
    kinds = {only} if isinstance(only, str) else set(only)
    return kinds - {"points"} | (set(POINTS) if "points" in kinds else set())


def assert_same_channel(part: Any, whole: Any) -> None:
    assert part.values.tobytes() == whole.values.tobytes()
    for name in ("label", "unit", "description", "rate"):
        assert getattr(part, name) == getattr(whole, name), name
    if whole.kind != "analogs":
        assert part.residuals.tobytes() == whole.residuals.tobytes()
        assert part.cameras.tobytes() == whole.cameras.tobytes()


def assert_part(part: mox.Trial, whole: mox.Trial, only: Any) -> None:
    """What was asked for is as in the whole trial, bit for bit, and everything else is named."""
    wanted = kinds_of(only)
    for kind in KINDS:
        read, all_of_it = getattr(part, kind), getattr(whole, kind)
        if kind in wanted:
            assert read.labels == all_of_it.labels
            assert read.values.tobytes() == all_of_it.values.tobytes()
            for label in all_of_it:
                assert_same_channel(read[label], all_of_it[label])
            assert kind not in part.unread
        else:
            assert len(read) == 0
            assert part.unread.get(kind, {}) == all_of_it.units
    if "rotations" in wanted:
        assert {k: v.tobytes() for k, v in part.rotations.items()} == {
            k: v.tobytes() for k, v in whole.rotations.items()
        }
    else:
        assert len(part.rotations) == 0
        assert list(part.unread.get("rotations", {})) == whole.rotations.labels
    for name in ("rate", "frames", "first_frame", "samples_per_frame"):
        assert getattr(part, name) == getattr(whole, name)
    assert part.time.tobytes() == whole.time.tobytes()
    assert part.analogs.time.tobytes() == whole.analogs.time.tobytes()
    assert list(part.events) == list(whole.events)
    assert [plate.labels for plate in part.platforms] == [plate.labels for plate in whole.platforms]
    for mine, theirs in zip(part.platforms, whole.platforms, strict=True):
        assert mine.corners.tobytes() == theirs.corners.tobytes()
    assert str(node(part, "Format/Metadata")) == str(node(whole, "Format/Metadata"))


@pytest.mark.parametrize("only", PARTS)
@pytest.mark.parametrize(
    ("processor", "storage"), list(product(("intel", "dec", "mips"), ("real", "integer")))
)
def test_what_is_read_is_what_the_whole_file_gives(processor: str, storage: str, only: Any):
    source = content(processor=processor, storage=storage)
    assert_part(mox.read(source, only=only), mox.read(source), only)


@pytest.mark.parametrize("only", ["markers", ("angles", "analogs"), "points", ()])
@pytest.mark.parametrize("name", [each.name for each in SAMPLES])
def test_parts_of_recordings_are_exact(sample: Callable[[str], Path], name: str, only: Any):
    path = sample(name)
    assert_part(mox.read(path, odd="ignore", only=only), mox.read(path, odd="ignore"), only)


@pytest.mark.parametrize("as_path", [True, False])
def test_paths_bytes_and_files_are_read_in_parts(tmp_path: Path, as_path: bool):
    path = tmp_path / "walk.c3d"
    path.write_bytes(CONTENT)
    source: Any = path if as_path else io.BytesIO(CONTENT)
    trial = mox.read(source, only=iter(["angles"]))
    assert (trial.angles.labels, len(trial.markers)) == (["LKnee", "RKnee"], 0)


def test_all_kinds_together_are_the_whole_trial():
    part = mox.read(CONTENT, only=("points", "analogs", "rotations"))
    assert part.unread == {}
    assert snapshot(part) == snapshot(mox.read(CONTENT))


def test_kinds_that_a_file_does_not_have_are_not_missing(tmp_path: Path):
    trial = mox.read(c3d_bytes({"A": track(3)}), only="markers")
    assert trial.unread == {}
    trial.write(tmp_path / "a.c3d")
    assert mox.read(tmp_path / "a.c3d").markers.labels == ["A"]


WORDS = {
    "only others are valid": ([-1] * 4, [0] * 4),
    "none is valid": ([-1] * 4, [-1] * 4),
    "the wanted ones are zeros": ("zeros", [-1] * 4),
    "all are zeros": ("zeros", "zeros"),
}


@pytest.mark.parametrize("only", ["markers", "angles"])
@pytest.mark.parametrize("storage", ["real", "integer"])
@pytest.mark.parametrize("case", WORDS)
def test_what_residuals_mean_is_a_question_to_all_points(case: str, storage: str, only: Any):
    points = []
    for label, words in zip(("A", "B"), WORDS[case], strict=True):
        place = np.zeros((4, 3)) if words == "zeros" else track(4)
        points.append((label, np.column_stack([place, [-1] * 4 if words == "zeros" else words])))
    source = c3d_bytes(points, storage=storage, parameters={"POINT:ANGLES": ["B"]})
    part, whole = mox.read(source, odd="ignore", only=only), mox.read(source, odd="ignore")
    assert_part(part, whole, only)
    assert part.warnings == whole.warnings


def test_descriptions_are_those_of_the_columns_in_the_file():
    angles = mox.read(CONTENT, only="angles").angles
    assert [angles[label].description for label in angles] == ["point 1", "point 7"]


# What was left out is told.


def test_a_channel_that_was_not_read_is_told_by_its_label():
    trial = mox.read(CONTENT, only="markers")
    with pytest.raises(KeyError) as failure:
        trial.angles["LKnee"]
    assert failure.value.args == (
        "'LKnee' was not read, since only other kinds than angles were asked for",
    )
    with pytest.raises(KeyError, match="'LPower' was not read"):
        trial.points["LPower"]
    with pytest.raises(KeyError, match="'Fz' was not read"):
        del trial.analogs["Fz"]
    with pytest.raises(KeyError, match="'pelvis' was not read"):
        trial.rotations["pelvis"]
    assert "LKnee" not in trial.angles
    assert trial.angles.get("LKnee") is None


def test_a_label_that_the_file_does_not_have_is_unknown_as_ever():
    trial = mox.read(CONTENT, only="markers")
    with pytest.raises(KeyError) as failure:
        trial.angles["Knee"]
    assert failure.value.args == ("no channel 'Knee' among the angles",)
    with pytest.raises(KeyError) as failure:
        trial.markers["LASi"]
    assert failure.value.args == (
        "no channel 'LASi' among the markers; nearest: LASI, LASI_2, RASI",
    )


@pytest.mark.parametrize("kind", ["angles", "analogs"])
def test_samples_of_a_kind_that_was_not_read_are_refused(kind: str):
    channels = getattr(mox.read(CONTENT, only="markers"), kind)
    with pytest.raises(ValueError, match=f"^the {kind} were not read$"):
        channels.values  # noqa: B018


def test_channels_can_be_added_to_a_kind_that_was_not_read():
    trial = mox.read(CONTENT, only="markers")
    trial.angles["mine"] = np.ones((FRAMES, 3))
    trial.analogs["also mine"] = np.arange(FRAMES * 3)
    assert trial.angles.values.shape == (FRAMES, 1, 3)
    assert trial.analogs.values[:, 0].tolist() == list(range(FRAMES * 3))
    assert set(trial.unread) == {"angles", "forces", "moments", "powers", "analogs", "rotations"}


def test_units_and_labels_of_what_was_left_out():
    assert mox.read(CONTENT, only="analogs").unread == {
        "markers": {"LASI": "mm", "unamed_2": "mm", "RASI": "mm", "LASI_2": "mm"},
        "angles": {"LKnee": "deg", "RKnee": "deg"},
        "forces": {"LForce": "N"},
        "moments": {"LMoment": "Nmm"},
        "powers": {"LPower": "W"},
        "rotations": {"pelvis": "", "thorax": ""},
    }


def test_a_platform_without_its_channels_has_no_wrench_but_all_else():
    trial = mox.read(CONTENT, only="points")
    (plate,) = trial.platforms
    assert plate.labels == ["Fx", "Fy", "Fz", "Mx", "My", "Mz"]
    assert repr(plate) == "<platform 0: type 2, Fx Fy Fz Mx My Mz>"
    assert (plate.type, plate.channels, plate.corners.tolist()) == (2, [], CORNERS)
    text = (
        "only a part of the file was read, without the analog channels that its force platforms "
        "measure with"
    )
    for measure in (plate.wrench, plate.reaction, trial.platforms.detect_events):
        with pytest.raises(ValueError, match=f"^{text}$"):
            measure()
    with pytest.raises(ValueError, match=r"^the analog channels were not read$"):
        plate.zero(0.0, 1.0)
    for function in ("moxGetForcePlatformWrenches", "moxGetGroundReactionWrenches"):
        with pytest.raises(RuntimeError, match=f"^{text}$"):
            getattr(_moxPY, function)(trial)
    assert len(_moxPY.moxGetForcePlatforms(trial)) == len(
        _moxPY.moxGetForcePlatforms(mox.read(CONTENT))
    )


@pytest.mark.parametrize("labels", [None, [], ["Fx", "Fy"]])
def test_channels_that_are_added_are_not_those_that_a_platform_measures_with(labels: Any):
    named = {} if labels is None else {"ANALOG:LABELS": labels}
    trial = mox.read(content(parameters=named), only="markers")
    for number in range(6):
        trial.analogs[f"mine {number}"] = np.ones(FRAMES * 3)
    (plate,) = trial.platforms
    assert (plate.channels, len(plate.labels), plate.is_read) == ([], 6, False)
    with pytest.raises(ValueError, match="without the analog channels"):
        plate.wrench()
    with pytest.raises(RuntimeError, match="without the analog channels"):
        _moxPY.moxGetForcePlatformWrenches(trial)
    (described,) = _moxPY.moxGetForcePlatforms(trial)[0]
    assert described["channels"] == {}
    assert "DevicesIndex" not in str(node(trial, ANALOGS))


def test_channels_of_another_trial_are_not_those_that_a_platform_measures_with():
    whole = mox.read(CONTENT)
    trial = mox.read(CONTENT, only="markers").merged(whole, suffix="_other")
    with pytest.raises(ValueError, match="without the analog channels"):
        trial.platforms[0].wrench()


def test_platforms_measure_whatever_was_not_read_of_a_trial_that_is_merged():
    others = [Analog(label, np.zeros(FRAMES * 3), scale=1.0) for label in "abcdefghi"]
    part = mox.read(content(analogs=others, platforms=()), only="markers")
    whole = mox.read(CONTENT)
    both = whole.merged(part, suffix="_other")
    assert list(both.unread["analogs"]) == list("abcdefghi")
    (plate,), (own,) = both.platforms, whole.platforms
    assert (plate.labels, plate.is_read) == (["Fx", "Fy", "Fz", "Mx", "My", "Mz"], True)
    assert plate.wrench().force.tobytes() == own.wrench().force.tobytes()
    assert len(both.to_xarray().platform) == 1


def test_without_platforms_nobody_misses_the_channels():
    trial = mox.read(content(platforms=()), only="points")
    assert _moxPY.moxGetForcePlatformWrenches(trial) == []


def test_the_line_of_a_trial_says_what_was_not_read():
    assert repr(mox.read(EXAMPLE, only="points")).endswith("2 platforms; not read: 20 analogs>")
    assert "not read" not in repr(mox.read(EXAMPLE))
    assert "Fz1" in mox.read(EXAMPLE, only=())._repr_html_()


def test_a_part_is_not_checked():
    with pytest.raises(ValueError, match=r"^only a part .*, without its analogs$"):
        mox.read(EXAMPLE, only="points").check()


def test_what_was_not_read_is_no_difference():
    part, whole = mox.read(EXAMPLE, only=("markers", "rotations")), mox.read(EXAMPLE)
    with pytest.raises(ValueError, match=r"^the angles of the first trial were not read$"):
        part.differences(whole)
    with pytest.raises(ValueError, match=r"^the analogs of the second trial were not read$"):
        whole.differences(part, only=("markers", "analogs"))
    assert whole.differences(part, only=("clock", "markers", "residuals", "platforms")) == []
    assert part.differences(mox.read(EXAMPLE, only="markers")) == []


def test_the_page_of_a_part_shows_what_was_read():
    trial = mox.read(CONTENT, only=("markers", "angles"))
    content = content_in(trial.view().html)
    assert {curve["kind"] for curve in content["curves"]} == {"angles"}
    assert content["plates"] == []


# Nothing is lost by writing.

LOST = (
    "Export to c3d failed : only a part of the file was read, and 2 angles, 1 force, 1 moment, "
    "1 power, 7 analog channels and 2 rotations would be lost. Read all of it to write it"
)
MADE: dict[str, Callable[[mox.Trial], mox.Trial]] = {
    "itself": lambda trial: trial,
    "a copy": lambda trial: trial.copy(),
    "a deep copy": copy.deepcopy,
    "a pickle": lambda trial: pickle.loads(pickle.dumps(trial)),
    "the same handle": lambda trial: mox.Trial.of(trial.this),
    "a part of it": lambda trial: trial.crop(6, 8),
    "cropped twice": lambda trial: trial.crop(6, 9).crop(7, 8),
    "in other units": lambda trial: trial.in_units(length="m"),
    "turned": lambda trial: trial.rotated(np.eye(3)),
    "filled": lambda trial: trial.fill_gaps(),
    "filtered": lambda trial: trial.filter(10.0, order=1),
    "resampled": lambda trial: trial.resample(50.0, analog_rate=150.0),
    "what others were merged into": lambda trial: trial.merged(bare()),
    "merged into another": lambda trial: bare().merged(trial),
}


def bare() -> mox.Trial:
    """As many frames as CONTENT has, and another marker."""
    return mox.read(c3d_bytes({"other": track(FRAMES)}, first_frame=5))


@pytest.mark.parametrize("how", MADE)
def test_a_part_is_not_written(how: str, tmp_path: Path):
    trial = MADE[how](mox.read(CONTENT, only="markers"))
    there = tmp_path / "there.c3d"
    there.write_bytes(b"as it was")
    before = snapshot(trial)
    text = (
        LOST
        if how != "merged into another"
        else LOST.replace(" and 2 rotations", "").replace("1 power, 7", "1 power and 7")
    )
    for path in (there, tmp_path / "new.c3d"):
        with pytest.raises(RuntimeError) as failure:
            _moxPY.moxWriteAcquisition(trial, str(path))
        assert str(failure.value) == text
        with pytest.raises(ValueError, match=f"^{text}$"):
            trial.write(path)
    with pytest.raises(ValueError, match="only a part"):
        trial.write(io.BytesIO(), storage="integer")
    with pytest.raises(ValueError, match="only a part"):
        trial.export(tmp_path / "new.c3d")
    assert [path.name for path in tmp_path.iterdir()] == ["there.c3d"]
    assert there.read_bytes() == b"as it was"
    assert snapshot(trial) == before


def test_what_was_read_is_exported(tmp_path: Path):
    trial, whole = mox.read(EXAMPLE, only="markers"), mox.read(EXAMPLE)
    assert trial.to_pandas("markers").equals(whole.to_pandas("markers"))
    assert trial.to_xarray().marker.values.tolist() == whole.markers.labels
    for name in ("a.csv", "a.json", "a.npz", "a.trc"):
        trial.export(tmp_path / name)
    made = {path.name for path in tmp_path.iterdir()}
    assert made == {"a.json", "a.npz", "a.trc", "a_events.csv", "a_markers.csv", "a_trial.csv"}
    with pytest.raises(ValueError, match="angles"):
        trial.to_pandas("angles")


# What can be asked for.


def test_an_unknown_kind_names_those_that_there_are():
    text = (
        "only takes 'markers', 'angles', 'forces', 'moments', 'powers', 'points', 'analogs', "
        "'rotations'; not 'platforms'"
    )
    with pytest.raises(ValueError, match=f"^{text}$"):
        mox.read(CONTENT, only=("markers", "platforms"))  # type: ignore[arg-type]
    with pytest.raises(ValueError, match="not ''"):
        mox.read(CONTENT, only="")  # type: ignore[arg-type]
    with pytest.raises(ValueError, match="not 3"):
        mox.read(CONTENT, only=[3])  # type: ignore[list-item]
    with pytest.raises(TypeError, match=r"^only is a kind or several, not int$"):
        mox.read(CONTENT, only=3)  # type: ignore[arg-type]


# OpenSim's files.

MOT = (
    "moved\nversion=1\nnRows=2\nnColumns=3\ninDegrees=no\nendheader\n"
    "time\ta\tb\n0\t1\t2\n0.1\t3\t4\n"
)


def test_columns_of_text_files_are_left_out_as_well(tmp_path: Path):
    trial = mox.read(MOT.encode(), only="markers")
    assert trial.unread == {"analogs": {"a": "", "b": ""}}
    assert (len(trial.analogs), trial.frames) == (0, 2)
    with pytest.raises(ValueError, match="2 analog channels would be lost"):
        trial.write(tmp_path / "a.c3d")
    assert mox.read(MOT.encode(), only="analogs").unread == {}


# What it costs.

LONG = 40_000


def large_file(path: Path) -> C3DFile:
    """50 MB of markers and analog samples, of which the system stores none."""
    file = C3DFile(
        {f"P{i}": np.zeros((0, 3)) for i in range(20)},
        analogs=[Analog(f"A{i}", np.zeros(0)) for i in range(10)],
        frames=LONG,
        samples_per_frame=20,
        data=b"",
        parameters={"POINT:FRAMES": LONG},
    )
    path.write_bytes(file.to_bytes())
    with path.open("r+b") as content:
        content.truncate(file.layout().data_offset + LONG * (20 * 16 + 10 * 20 * 4))
    return file


def bytes_read() -> int:
    """What this process has asked the system for, by files of any kind."""
    table = dict(line.split(": ") for line in Path("/proc/self/io").read_text().splitlines())
    return int(table["rchar"])


@pytest.mark.skipif(not Path("/proc/self/io").exists(), reason="the system does not count bytes")
def test_without_samples_a_file_costs_its_parameters(tmp_path: Path):
    path = tmp_path / "large.c3d"
    large_file(path)
    size = path.stat().st_size
    before = bytes_read()
    trial = mox.read(path, only=())
    assert bytes_read() - before < 100_000 < size / 100
    assert (trial.frames, len(trial.unread["markers"]), len(trial.unread["analogs"])) == (
        LONG,
        20,
        10,
    )
    before = bytes_read()
    mox.read(path, only="markers")
    assert bytes_read() - before < size + 100_000  # one pass


@pytest.mark.skipif(under_a_sanitizer(), reason="sanitizers take memory of their own")
def test_what_is_not_read_takes_no_memory(tmp_path: Path):
    path = tmp_path / "large.c3d"
    large_file(path)
    with address_space(25_000_000):
        with pytest.raises(MemoryError):
            mox.read(path)
        trial = mox.read(path, only="markers")
    assert trial.markers.values.shape == (LONG, 20, 3)
