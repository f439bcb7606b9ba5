"""What trials and their parts show of themselves."""

from __future__ import annotations

from html.parser import HTMLParser
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from moxPY import data_store
from moxPY.trial import Trial
from support.c3d_bytes import Analog
from support.read_c3d import read_c3d, track
from support.small_trials import example_trial


@pytest.fixture
def trial() -> Trial:
    return Trial.of(example_trial())


class Tables(HTMLParser):
    """The texts of the cells, and whether every element is closed in order."""

    def __init__(self, page: str) -> None:
        super().__init__()
        self.open: list[str] = []
        self.captions: list[str] = []
        self.rows: dict[str, list[list[str]]] = {}
        self.heading = ""
        self.feed(page)
        self.close()
        assert self.open == []

    def handle_starttag(self, tag: str, attrs: Any) -> None:
        self.open.append(tag)
        if tag == "caption":
            self.captions.append("")
        elif tag == "tr":
            self.rows.setdefault(self.captions[-1], []).append([])
        elif tag in ("td", "th"):
            self.rows[self.captions[-1]][-1].append("")

    def handle_endtag(self, tag: str) -> None:
        assert self.open.pop() == tag

    def handle_data(self, data: str) -> None:
        if self.open[-1] == "caption":
            self.captions[-1] += data
        elif self.open[-1] == "b":
            self.heading += data
        else:
            self.rows[self.captions[-1]][-1][-1] += data


def test_a_trial_in_one_line(trial: Trial) -> None:
    assert repr(trial).removeprefix("<Trial: gait_trial.c3d, ").removeprefix("<Trial: ") == (
        "360 frames at 100 Hz (3.6 s), 40 markers, 8 angles, 8 forces, 6 moments, 6 powers, "
        "20 analogs, 13 events, 2 platforms>"
    )
    assert repr(Trial.new()) == "<Trial: 0 frames at 100 Hz (0 s)>"
    single = Trial.new(frames=1, rate=0.0)
    single.markers["A"] = np.ones((1, 3))
    single.events.add("x", 0.0)
    assert repr(single) == "<Trial: 1 frame, 1 marker, 1 event>"


def test_cycles_and_their_mean_in_one_line() -> None:
    trial = Trial.new(frames=300)
    trial.markers["A"] = np.ones((300, 3))
    for time in (0.5, 1.5, 2.5):
        trial.events.add("Foot Strike", time, context="Left")
    cycles = trial.cycles("Left")
    assert repr(cycles[0]) == "<cycle: 0.500 s to 1.500 s, 2 events>"
    mean = trial.markers["A"].mean_cycle(cycles)
    assert repr(mean) == "<mean cycle: (101, 3), of up to 2 cycles>"
    assert repr(trial.markers["A"].mean_cycle([])) == "<mean cycle: (101, 3), of up to 0 cycles>"


def test_tables_of_a_trial(trial: Trial) -> None:
    tables = Tables(trial._repr_html_())
    assert tables.heading.endswith("360 frames at 100 Hz (3.6 s) · frames 1 to 360")
    assert tables.captions == ["Channels (88)", "Not seen (27)", "Events (13)", "Platforms (2)"]
    assert ["Markers", "40", "mm", "100 Hz", "LFHD, LBHD, RFHD, …, RMT5"] in (
        tables.rows["Channels (88)"]
    )
    assert ["Analogs", "20", "N, Nmm, V", "1000 Hz", "Fx1, Fy1, Fz1, …, RGastroc"] in (
        tables.rows["Channels (88)"]
    )
    gaps = tables.rows["Not seen (27)"]
    assert gaps[1:4] == [
        ["C7", "10", "351–360"], ["LFIN", "22", "61–82"], ["RWRB", "11", "119–123, 232–237"],
    ]  # fmt: skip
    assert gaps[-1] == ["… and 15 more"]
    events = tables.rows["Events (13)"]
    assert events[1] == ["0.200 s", "Right", "Foot Strike"]
    assert len(events) == 14
    assert events[-1] == ["… and 1 more"]
    assert tables.rows["Platforms (2)"][1:] == [
        ["0", "2", "600 × 400 mm", "Fx1, Fy1, Fz1, …, Mz1"],
        ["1", "2", "600 × 400 mm", "Fx2, Fy2, Fz2, …, Mz2"],
    ]


def test_a_trial_without_anything_has_no_tables() -> None:
    tables = Tables(Trial.new()._repr_html_())
    assert tables.heading == "0 frames at 100 Hz (0 s) · no frames"
    assert tables.captions == []


def test_texts_of_files_are_escaped(tmp_path: Path) -> None:
    evil = '<b onload="x">&amp;'
    trial = Trial.of(
        read_c3d(
            tmp_path,
            {evil: np.where(track(3) == 1.0, np.nan, track(3))},
            analogs=[Analog(f"{evil}1", np.zeros(3))],
        )
    )
    trial.markers.unit = f"{evil}m"
    trial.analogs.unit = f"{evil}u"
    trial.events.add(f"{evil}2", 0.5, f"{evil}3")
    page = trial._repr_html_()
    assert "<b onload" not in page
    tables = Tables(page)
    assert tables.rows["Channels (2)"][1:] == [
        ["Markers", "1", f"{evil}m", "100 Hz", evil],
        ["Analogs", "1", f"{evil}u", "100 Hz", f"{evil}1"],
    ]
    assert tables.rows["Events (1)"][1] == ["0.500 s", f"{evil}3", f"{evil}2"]
    assert tables.rows["Not seen (1)"][1][0] == evil


def test_any_trial_shows_itself(any_trial: Any) -> None:
    trial = Trial.of(any_trial)
    assert repr(trial).startswith("<Trial: ")
    assert "\n" not in repr(trial)
    assert "frame" in Tables(trial._repr_html_()).heading


def test_no_line_break_of_a_label_breaks_the_line() -> None:
    trial = Trial.new(frames=1)
    trial.markers["a\nb"] = np.ones((1, 3))
    assert repr(trial.markers) == r"<markers (1): a\nb>"
    assert repr(trial.markers["a\nb"]) == r"<markers: a\nb, (1, 3) mm>"


def test_nothing_of_a_closed_trial_raises(trial: Trial) -> None:
    parts = {
        "Trial": trial, "markers": trial.markers, "points": trial.points,
        "analogs": trial.analogs, "events": trial.events, "platforms": trial.platforms,
        "platform 0": trial.platforms[0], "rotations": trial.rotations,
        "channel": trial.markers["LASI"],
    }  # fmt: skip
    trial.close()
    assert {name: repr(part) for name, part in parts.items()} == {
        name: f"<{name}: closed>" for name in parts
    }
    assert trial._repr_html_() == "<code>&lt;Trial: closed&gt;</code>"


def test_a_store_without_anything_shows_why_it_cannot() -> None:
    trial = Trial.of(data_store())
    assert repr(trial).startswith("<Trial: ")
    assert trial._repr_html_().startswith("<code>&lt;Trial: ")


def test_everything_is_listed(trial: Trial) -> None:
    names = {
        "markers", "angles", "forces", "moments", "powers", "points", "analogs", "events",
        "platforms", "rotations", "rate", "frames", "first_frame", "time", "copy", "cycles",
        "to_pandas", "to_polars", "to_xarray", "to_rerun",
    }  # fmt: skip
    assert names <= set(dir(trial))
    assert {"labels", "unit", "values", "rename", "gaps", "update_from"} <= set(dir(trial.markers))
    for part in (trial.markers, trial.points, trial.analogs, trial.rotations):
        assert part._ipython_key_completions_() == part.labels
