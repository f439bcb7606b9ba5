"""JSON of everything."""

from __future__ import annotations

import json
from dataclasses import asdict
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from moxPY.trial import Trial, read

KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")


def load(path: Path) -> Any:
    def refuse(word: str) -> None:
        raise AssertionError(f"{word} is no JSON")

    return json.loads(path.read_text("utf-8"), parse_constant=refuse)


def numbers(nested: Any) -> Any:
    return np.array(nested, dtype=np.float64)


def test_everything_is_there(any_trial: Trial, tmp_path: Path) -> None:
    (path,) = any_trial.export(tmp_path / "walk.json")
    content = load(path)
    assert content["frames"] == any_trial.frames
    assert content["rate"] == any_trial.rate
    assert content["analog_rate"] == any_trial.analogs.rate
    assert content["first_frame"] == any_trial.first_frame
    assert content["warnings"] == any_trial.warnings
    assert content["events"] == [asdict(event) for event in any_trial.events]
    for kind in KINDS:
        channels = getattr(any_trial, kind)
        assert [each["name"] for each in content[kind]] == channels.labels
        assert [each["unit"] for each in content[kind]] == list(channels.units.values())
        for told, channel in zip(content[kind], channels.items(), strict=True):
            assert told["label"] == channel[1].label
            assert told["description"] == channel[1].description
            assert "values" not in told
    assert list(content["metadata"]) == list(any_trial.metadata)


def test_metadata_with_types_and_shapes(walk: Trial, tmp_path: Path) -> None:
    content = load(walk.export(tmp_path / "walk.json")[0])
    for name, group in walk.metadata.items():
        told = content["metadata"][name]
        assert told["description"] == group.description
        assert list(told["entries"]) == list(group)
        for key, entry in told["entries"].items():
            expected = group.entry(key)
            assert (entry["type"], tuple(entry["shape"])) == (expected.type, expected.shape)
            assert (entry["locked"], entry["description"]) == (
                expected.locked,
                expected.description,
            )
            assert np.array_equal(entry["value"], expected.value)
    (cadence,) = (each for each in content["analysis"] if each["name"] == "Cadence"
                  and each["context"] == "Left")  # fmt: skip
    assert cadence["value"] == walk.analysis["Left Cadence"]
    assert cadence["unit"] == "steps/min"


def test_platforms(walk: Trial, tmp_path: Path) -> None:
    content = load(walk.export(tmp_path / "walk.json", side="person")[0])
    assert (content["side"], content["threshold"]) == ("person", 20.0)
    for plate, told in zip(walk.platforms, content["platforms"], strict=True):
        assert told["number"] == plate.index + 1
        assert told["type"] == plate.type
        np.testing.assert_array_equal(told["corners"], plate.corners)
        np.testing.assert_array_equal(told["origin"], plate.origin)
        assert told["calibration"] is None
        assert told["channels"] == [channel.label for channel in plate.channels]
        assert told["units"] == plate.units._asdict()


def test_gaps_are_frames(odd: Trial, tmp_path: Path) -> None:
    content = load(odd.export(tmp_path / "odd.json")[0])
    # A component that is NaN counts as one that was not seen.
    assert content["markers"][0]["gaps"] == [[31, 32]]
    assert content["markers"][4]["label"] == content["markers"][5]["label"] == "time"
    assert content["markers"][5]["name"] == "time_2"


def test_samples_on_request(walk: Trial, tmp_path: Path) -> None:
    (path,) = walk.export(
        tmp_path / "walk.json", parts=["markers", "platforms"], side="plate", threshold=40.0
    )
    content = load(path)
    values = numbers([each["values"] for each in content["markers"]])
    np.testing.assert_array_equal(values.swapaxes(0, 1), walk.markers.values)
    assert "values" not in content["analogs"][0]
    reaction = walk.platforms[0].reaction(40.0)
    told = content["platforms"][0]
    np.testing.assert_array_equal(numbers(told["force"]), -reaction.force)
    np.testing.assert_array_equal(numbers(told["point"]), reaction.point)


def test_rotations(sample: Any, tmp_path: Path) -> None:
    trial = read(sample("C3DRotationExample.c3d"))
    content = load(trial.export(tmp_path / "walk.json", parts=["rotations"])[0])
    assert content["rotations"]["labels"] == trial.rotations.labels
    expected = np.array([trial.rotations[label] for label in trial.rotations])
    np.testing.assert_array_equal(numbers(content["rotations"]["values"]), expected)


def test_numbers_stand_in_one_line(odd: Trial, tmp_path: Path) -> None:
    (path,) = odd.export(tmp_path / "odd.json", parts=["analogs"])
    lines = path.read_text("utf-8").splitlines()
    values = [line for line in lines if line.lstrip().startswith('"values"')]
    assert values == [
        '      "values": [0.0, 0.3333333333333333, 0.6666666666666666, 1.0, 1.3333333333333333, '
        "1.6666666666666667]"
    ]
    assert '      "label": "Gürtel",' in lines


def test_a_part_that_the_trial_lacks(odd: Trial, tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=r"^the trial has no force platforms, which is asked for$"):
        odd.export(tmp_path / "odd.json", parts=["platforms"])
