"""What the sections say."""

from __future__ import annotations

from pathlib import Path

import moxPY
import numpy as np
import pytest
from moxPY.report import SECTIONS
from report.written import Part, players, sections

Rows = list[list[str]]


def shown(path: Path, trial: moxPY.Trial, *names: str, **options: object) -> dict[str, Part]:
    """Some sections of the report of a trial."""
    left_out = [name for name in SECTIONS if name not in names]
    page = trial.report(path / "page.html", without=left_out, **options)  # type: ignore[arg-type]
    return sections(page.read_text("utf-8"))


def test_the_header_says_what_the_file_says(walk: moxPY.Trial, tmp_path: Path):
    walk.metadata["TRIAL"]["DATE"] = "2024-05-06"
    part = shown(tmp_path, walk, "recording")["recording"]
    assert dict(part.tables[0]) == {
        "File": "gait_trial.c3d",
        "Subject": "Walker",
        "Recorded": "2024-05-06",
        "Device": "Synthetic make_gait_trial 1.0",
        "Length": "3.60 s (360 frames, 1 to 360)",
        "Rates": "100 Hz, analog 1000 Hz",
        "Channels": "40 markers, 8 angles, 8 forces, 6 moments, 6 powers, 20 analogs",
        "Force platforms": "type 2, type 2",
    }


@pytest.mark.parametrize(
    ("entries", "device"),
    [
        ({"COMPANY": "Maker", "SOFTWARE": "Program", "VERSION_LABEL": "7.2"}, "Maker Program 7.2"),
        ({"Company": " Maker ", "SOFTWARE": "", "VERSION": "1"}, "Maker 1"),
        ({"SOFTWARE": "Program", "VERSION": np.array([2, 0, 11])}, "Program 2.0.11"),
        ({"VERSION": 3.5}, "3.5"),
        ({}, "not stated in the file"),
    ],
)
def test_the_device_is_what_the_manufacturer_states(
    tmp_path: Path, entries: dict[str, object], device: str
):
    trial = moxPY.Trial.new(frames=1)
    trial.metadata["MANUFACTURER"] = entries
    part = shown(tmp_path, trial, "recording")["recording"]
    assert dict(part.tables[0])["Device"] == device


def test_what_the_file_does_not_say_is_said(tmp_path: Path):
    part = shown(tmp_path, moxPY.Trial.new(frames=4, rate=50.0), "recording")["recording"]
    facts = dict(part.tables[0])
    assert facts["Recorded"] == facts["Device"] == "not stated in the file"
    assert "Subject" not in facts
    assert (facts["Length"], facts["Rates"]) == ("0.08 s (4 frames, 1 to 4)", "50 Hz")


def test_findings_are_those_of_the_checks_the_worst_first(walk: moxPY.Trial, tmp_path: Path):
    walk.analogs["Fz1"].values = np.zeros(3600)
    part = shown(tmp_path, walk, "checks")["checks"]
    found = walk.check(without="gaps")
    assert {each.severity for each in found} == {"warning", "note"}
    assert part.tables[0][0] == ["", "Finding"]
    assert part.tables[0][1:] == [
        [each.severity, f"{each.channel}: {each.text}" if each.channel else each.text]
        for severity in ("error", "warning", "note")
        for each in found
        if each.severity == severity
    ]


def test_gaps_are_those_of_the_markers(walk: moxPY.Trial, tmp_path: Path):
    part = shown(tmp_path, walk, "gaps")["gaps"]
    assert part.tables == [
        [
            ["Marker", "Frames not seen", "Runs of frames"],
            ["LFIN", "22 (6 %)", "61–82"],
            ["LASI", "21 (6 %)", "97–110, 211–217"],
            ["LTHI", "12 (3 %)", "1–12"],
            ["RWRB", "11 (3 %)", "119–123, 232–237"],
            ["C7", "10 (3 %)", "351–360"],
            ["RASI", "9 (2 %)", "152–160"],
            ["RTOE", "6 (2 %)", "197–202"],
        ]
    ]


def test_long_lists_are_cut_and_counted(walk: moxPY.Trial, tmp_path: Path):
    for number, label in enumerate(walk.markers.labels[:20]):
        values = walk.markers[label].values.copy()
        values[10 : 11 + 2 * number : 2] = np.nan
        walk.markers[label] = values
    rows = shown(tmp_path, walk, "gaps")["gaps"].tables[0]
    assert len(rows) == 1 + 12 + 1
    incomplete = {gap.label for gap in walk.markers.gaps()}
    assert rows[-1] == [f"… and {len(incomplete) - 12} more", "", ""]
    longest = next(row for row in rows if row[0] == walk.markers.labels[19])
    assert longest[2].startswith("11, 13, 15, 17, 19, 21, and ")


def test_nothing_found_and_nothing_missing_is_said(tmp_path: Path):
    trial = moxPY.Trial.new(frames=20, rate=100.0)
    trial.markers["A"] = np.arange(60.0).reshape(20, 3)
    parts = shown(tmp_path, trial, "checks", "gaps")
    assert parts["checks"].texts == ["Checks: nothing found."]
    assert parts["gaps"].texts == ["Markers: every one seen in every frame."]


def test_parameters_are_those_of_the_gait(walk: moxPY.Trial, tmp_path: Path):
    part = shown(tmp_path, walk, "gait")["gait"]
    (rows,) = part.tables
    assert rows[0] == ["Mean ± standard deviation", "Left", "Right"]
    # By hand: steps of 0.65 m and 0.55 s, heels 0.17 m apart, stance 60 % of a stride.
    for row in (
        ["Walking speed (m/s)", "1.18 ± 0.00", "1.18 ± 0.00"],
        ["Cadence (steps/min)", "109.1 ± 0.0", "109.1 ± 0.0"],
        ["Stride time (s)", "1.10 ± 0.00", "1.10 ± 0.00"],
        ["Stride length (m)", "1.30 ± 0.00", "1.30 ± 0.00"],
        ["Step length (m)", "0.65 ± 0.00", "0.65 ± 0.00"],
        ["Stance (%)", "60.0 ± 0.0", "60.0 ± 0.0"],
        ["Double support (%)", "20.0 ± 0.0", "20.0 ± 0.0"],
    ):
        assert row in rows
    assert len(rows) == 1 + 15
    assert part.texts == [
        "Strides: 2 left, 3 right.",
        "Lengths by the markers LHEE and RHEE (heel), z upwards.",
    ]


def test_what_a_trial_lacks_is_not_shown_with_the_reason(tmp_path: Path):
    trial = moxPY.Trial.new(frames=20, rate=100.0)
    trial.markers["A"] = np.arange(60.0).reshape(20, 3)
    trial.angles["LKneeAngles"] = np.ones((20, 3))
    page = trial.report(tmp_path / "page.html").read_text("utf-8")
    parts = sections(page)
    assert list(parts) == ["recording", "checks", "gaps", "player", "not-shown"]
    cycles = (
        "neither side has a gait cycle, from one 'Foot Strike' to the next; "
        "trial.platforms.detect_events(store=True) finds some where there are force platforms"
    )
    assert sorted(parts["not-shown"].texts) == [
        f"Angles: {cycles}.",
        "Electromyography: there are no analog channels.",
        "Events and gait: there are no events.",
        "Ground reaction: there are no force platforms.",
        "Moments: there are no moments.",
        "Powers: there are no powers.",
    ]
    assert len(players(page)) == 1


# Several trials of a subject.


def test_several_trials_stand_side_by_side(walk: moxPY.Trial, other: moxPY.Trial, tmp_path: Path):
    parts = shown(tmp_path, walk, "recording", "gait", others=[other])
    facts: dict[str, Rows] = {row[0]: row[1:] for row in parts["recording"].tables[0]}  # type: ignore[misc]
    assert facts["File"] == ["1. gait_trial.c3d", "2. walk_2.c3d"]
    assert facts["Subject"] == ["Walker", "Walker"]
    assert facts["Length"] == ["3.60 s (360 frames, 1 to 360)", "3.01 s (301 frames, 11 to 311)"]
    gait = parts["gait"]
    (rows,) = gait.tables
    assert rows[0] == ["Mean ± standard deviation", "Left 1", "Right 1", "Left 2", "Right 2"]
    assert all(len(row) == 5 for row in rows)
    assert gait.pictures == ["Events: 1. gait_trial.c3d", "Events: 2. walk_2.c3d"]
    assert gait.texts[0] == "1. gait_trial.c3d. Strides: 2 left, 3 right."
    assert "2. walk_2.c3d. Strides: 2 left, 2 right." in gait.texts


def test_more_trials_than_a_table_has_room_for(walk: moxPY.Trial, tmp_path: Path):
    part = shown(tmp_path, walk, "recording", others=[walk.copy() for _ in range(3)])["recording"]
    assert [len(rows[0]) for rows in part.tables] == [1 + 3, 1 + 1]
    assert part.tables[1][0] == ["File", "4. gait_trial.c3d"]


def test_angles_are_laid_over_each_other(walk: moxPY.Trial, other: moxPY.Trial, tmp_path: Path):
    page = walk.report(
        tmp_path / "page.html",
        others=[other],
        without=[name for name in SECTIONS if name != "angles"],
    ).read_text("utf-8")
    assert sections(page)["angles"].pictures == ["Angles, trials laid over each other"]
    assert page.count(">1. gait_trial.c3d (2 left, 3 right)<") == 1
    assert page.count(">2. walk_2.c3d (2 left, 2 right)<") == 1


def test_what_one_trial_alone_has_is_drawn_by_itself(
    walk: moxPY.Trial, other: moxPY.Trial, tmp_path: Path
):
    other.angles["LKneeAngles"].unit = "rad"
    other.angles["RElbowAngles"] = np.ones((other.frames, 3))
    part = shown(tmp_path, walk, "angles", others=[other])["angles"]
    assert part.pictures == [
        "Angles, trials laid over each other", "Angles: 1. gait_trial.c3d", "Angles: 2. walk_2.c3d",
    ]  # fmt: skip


def test_a_trial_without_cycles_is_named(walk: moxPY.Trial, other: moxPY.Trial, tmp_path: Path):
    other.events.clear()
    parts = shown(tmp_path, walk, "angles", others=[other])
    assert parts["angles"].pictures == ["Angles: 1. gait_trial.c3d"]
    assert (
        parts["not-shown"]
        .texts[0]
        .startswith("Angles: 2. walk_2.c3d: neither side has a gait cycle")
    )


@pytest.mark.parametrize("name", ["2198928.c3d", "TYPE-3.c3d", "phasespace_sample.c3d"])
def test_recordings_have_a_report(sample: object, tmp_path: Path, name: str):
    trial = moxPY.read(sample(name), odd="ignore")  # type: ignore[operator]
    page = trial.report(tmp_path / "page.html", without=["emg", "angles", "moments"])
    parts = sections(page.read_text("utf-8"))
    drawn = {"2198928.c3d": "powers", "TYPE-3.c3d": "forces", "phasespace_sample.c3d": "gaps"}
    assert parts[drawn[name]].pictures


def test_moments_are_those_of_strides_on_a_platform(
    walk: moxPY.Trial, other: moxPY.Trial, tmp_path: Path
):
    """Each foot of the example came down on a platform once; its other strides were beside it."""
    names = ("angles", "moments", "powers")
    left_out = [name for name in SECTIONS if name not in names]
    page = walk.report(tmp_path / "one.html", without=left_out).read_text("utf-8")
    parts = {name: page.partition(f'<section id="{name}">')[2].partition("</section>")[0]
             for name in names}  # fmt: skip
    assert "Left (2 cycles)" in parts["angles"]
    for name in "moments", "powers":
        assert "Left (1 cycle)" in parts[name]
        assert "Right (1 cycle)" in parts[name]
    page = walk.report(tmp_path / "two.html", others=other, without=left_out).read_text("utf-8")
    assert page.count("(1 left, 1 right)") == 4
    assert page.count("(2 left, 3 right)") == 1


def test_moments_without_a_stride_on_a_platform_are_not_shown(walk: moxPY.Trial, tmp_path: Path):
    for event in [each for each in walk.events if 1.2 < each.time < 1.9]:
        walk.events.remove(event)
    page = walk.report(tmp_path / "page.html", without="player").read_text("utf-8")
    parts = sections(page)
    assert "angles" in parts
    assert not {"moments", "powers"} & set(parts)
    assert (
        "Moments: no gait cycle begins with its foot on a force platform, which moments need; "
        "cycles= takes others."
    ) in parts["not-shown"].texts
