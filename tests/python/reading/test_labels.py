"""Labels that are duplicate, empty, too few or too many: no channel of a file is ever lost."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import text
from support.read_c3d import analogs_of, points_of, read_c3d, track

CHANNELS = 3
LABELS: list[tuple[list[Any], list[str], list[str]]] = [
    # in the file, keys, labels
    (["A", "B", "C"], ["A", "B", "C"], ["A", "B", "C"]),
    (["A", "A", "A"], ["A", "A_2", "A_3"], ["A", "A", "A"]),
    (["A", "A_2", "A"], ["A", "A_2", "A_3"], ["A", "A_2", "A"]),
    (["", "B", ""], ["unamed_0", "B", "unamed_2"], ["", "B", ""]),
    # A label that can be a name as it stands keeps it.
    (["L/R", "L\\R", "L_R"], ["L_R_2", "L_R_3", "L_R"], ["L/R", "L\\R", "L_R"]),
    (["/", "//", "\\"], ["_", "__", "__2"], ["/", "//", "\\"]),
    (["a", "A", " A"], ["a", "A", " A"], ["a", "A", " A"]),
    (["Bob:LASI", "*12", "."], ["Bob:LASI", "*12", "."], ["Bob:LASI", "*12", "."]),
]

labels = pytest.mark.parametrize(("in_file", "keys", "verbatim"), LABELS)


@labels
def test_point_labels(
    tmp_path: Path, in_file: list[Any], keys: list[str], verbatim: list[str]
) -> None:
    points = [(label, track(2, 10 * n)) for n, label in enumerate(in_file)]
    acquisition = read_c3d(tmp_path, points)
    values, info = _moxPY.moxGetPoints(acquisition)
    assert list(values) == keys
    assert info["label"] == dict(zip(keys, verbatim, strict=True))
    for n, key in enumerate(keys):
        np.testing.assert_array_equal(values[key], track(2, 10 * n), err_msg=key)


@labels
def test_analog_labels(
    tmp_path: Path, in_file: list[Any], keys: list[str], verbatim: list[str]
) -> None:
    channels = [(label, [n, n + 0.5]) for n, label in enumerate(in_file)]
    acquisition = read_c3d(tmp_path, analogs=channels, samples_per_frame=1)
    values, info = _moxPY.moxGetAnalogs(acquisition)
    assert list(values) == keys
    assert info["label"] == dict(zip(keys, verbatim, strict=True))
    for n, key in enumerate(keys):
        np.testing.assert_array_equal(values[key], [n, n + 0.5], err_msg=key)


def test_a_slashed_label_finds_its_point(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"L/R": track(2)})
    assert _moxPY.moxGetPoint(acquisition, "L/R")[1]["label"] == "L/R"


def test_names_are_unique_over_all_types(tmp_path: Path) -> None:
    points = [("A", track(2)), ("A", track(2, 10)), ("B", track(2, 20))]
    acquisition = read_c3d(tmp_path, points, parameters={"POINT:ANGLES": ["B"]})
    assert list(points_of(acquisition)) == ["B", "A", "A_2"]


@pytest.mark.parametrize("listed", [[], ["A"], ["A", "B"]])
def test_points_without_a_label_are_named_by_their_index(tmp_path: Path, listed: list[str]) -> None:
    points = [(name, track(2, n)) for n, name in enumerate("ABC")]
    acquisition = read_c3d(
        tmp_path, points, parameters={"POINT:LABELS": text("LABELS", listed, width=4)}
    )  # fmt: skip
    expected = listed + [f"unamed_{n}" for n in range(len(listed), 3)]
    assert list(points_of(acquisition)) == expected


def test_points_without_the_list_of_labels(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(2), "B": track(2, 5)}, parameters={"POINT:LABELS": None}
    )  # fmt: skip
    assert list(points_of(acquisition)) == ["unamed_0", "unamed_1"]
    np.testing.assert_array_equal(points_of(acquisition)["unamed_1"], track(2, 5))


def test_channels_without_the_list_of_labels(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, analogs={"A": [1, 2], "B": [3, 4]}, samples_per_frame=1,
        parameters={"ANALOG:LABELS": None},
    )  # fmt: skip
    assert list(analogs_of(acquisition)) == ["unamed_0", "unamed_1"]


def test_labels_of_no_width_are_empty(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(2), "B": track(2)},
        parameters={"POINT:LABELS": text("LABELS", [b"", b""], width=0)},
    )  # fmt: skip
    assert list(points_of(acquisition)) == ["unamed_0", "unamed_1"]


def test_surplus_labels_make_no_channels(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(2)}, parameters={"POINT:LABELS": ["A", "B", "C"]}
    )  # fmt: skip
    assert list(points_of(acquisition)) == ["A"]


def test_a_name_that_a_later_label_has_stays_with_the_label(tmp_path: Path) -> None:
    points = [("", track(2)), ("unamed_0", track(2, 10))]
    values = points_of(read_c3d(tmp_path, points))
    assert len(values) == 2
    np.testing.assert_array_equal(list(values.values())[1], track(2, 10))


@pytest.mark.parametrize("padding", [b"\0", b" ", b"\0xy", b"  \0 junk"])
def test_labels_end_at_their_padding(tmp_path: Path, padding: bytes) -> None:
    field = (b"LASI" + padding).ljust(16)
    acquisition = read_c3d(tmp_path, [(field, track(2))])
    assert list(points_of(acquisition)) == ["LASI"]


@pytest.mark.parametrize("width", [1, 4, 30, 127, 128, 255])
def test_labels_of_any_width(tmp_path: Path, width: int) -> None:
    label = "x" * width
    acquisition = read_c3d(tmp_path, {label: track(2)}, analogs={label: [1, 2]})
    assert list(points_of(acquisition)) == [label]
    assert list(analogs_of(acquisition)) == [label]


@pytest.mark.parametrize(
    ("stored", "shown"),
    [
        ("Käse".encode(), "Käse"),
        ("足首".encode(), "足首"),
        ("Käse".encode("latin-1"), "Käse"),
        (b"mm s\xb2", "mm s²"),
        (b"\x80 sold", "€ sold"),  # Windows-1252, where Latin-1 has a control character
        (b"A\x81B", "A\udc81B"),  # nothing in either
    ],
)
def test_text_beyond_ascii(tmp_path: Path, stored: bytes, shown: str) -> None:
    acquisition = read_c3d(
        tmp_path, [(stored, track(2))], analogs=[(stored, [1, 2])],
        point_descriptions=[stored],
    )  # fmt: skip
    values, info = _moxPY.moxGetPoints(acquisition)
    assert list(values) == [shown]
    assert info["label"] == {shown: shown}
    assert info["description"] == {shown: shown}
    assert list(analogs_of(acquisition)) == [shown]


def test_units_beyond_ascii(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(2)}, analogs={"B": [1, 2]}, point_units=b"m/s\xb2",
        parameters={"ANALOG:UNITS": text("UNITS", [b"\xb5V"])},
    )  # fmt: skip
    assert _moxPY.moxGetPoints(acquisition)[1]["units"] == {"ALL": "m/s²"}
    assert _moxPY.moxGetAnalogs(acquisition)[1]["units"] == {"ALLANALOGS": "µV"}
