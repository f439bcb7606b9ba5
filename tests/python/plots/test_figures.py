"""Figures: whose they are, that settings stay, that matplotlib is asked for late."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path
from xml.etree import ElementTree

import moxPY
import pytest
from plots.drawn import rendered
from support.command_line import environment

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


def run(script: str) -> str:
    done = subprocess.run(
        [sys.executable, "-c", script, str(EXAMPLE)],
        env=environment(MPLBACKEND="agg"), capture_output=True, text=True, check=False,
    )  # fmt: skip
    assert done.returncode == 0, done.stderr
    return done.stdout


def test_matplotlib_is_imported_by_the_first_picture_and_pyplot_by_none():
    script = """
import sys, moxPY
trial = moxPY.read(sys.argv[1])
print(trial.plot)
print("matplotlib" in sys.modules)
trial.plot.events()
print("matplotlib" in sys.modules, "matplotlib.pyplot" in sys.modules)
"""
    first, *others = run(script).splitlines()
    assert first.startswith("<plots of <Trial: gait_trial.c3d")
    assert others == ["False", "True False"]


def test_a_figure_belongs_to_pyplot_where_that_is_in_use_and_settings_stay():
    script = """
import sys, moxPY
import matplotlib.pyplot as plt
trial = moxPY.read(sys.argv[1])
before = dict(plt.rcParams)
axes = trial.plot.events()
print(plt.gcf() is axes.figure, plt.get_fignums(), dict(plt.rcParams) == before)
trial.events.clear()
for refused in (trial.plot.events, lambda: trial.plot.gaps([])):
    try:
        refused()
    except ValueError:
        print(plt.get_fignums())
figure, given = plt.subplots()
print(trial.plot.gaps(ax=given).figure is figure, plt.get_fignums())
"""
    assert run(script).splitlines() == ["True [1] True", "[1]", "[1]", "True [1, 2]"]


def test_without_matplotlib_it_says_what_to_install(
    example: moxPY.Trial, monkeypatch: pytest.MonkeyPatch
):
    for name in [name for name in sys.modules if name.partition(".")[0] == "matplotlib"]:
        monkeypatch.delitem(sys.modules, name)
    monkeypatch.setattr(sys, "meta_path", [_Missing(), *sys.meta_path])
    with pytest.raises(ImportError, match=r'this needs matplotlib: pip install "moxPY\[plot\]"'):
        example.plot.events()


class _Missing:
    """An import system without matplotlib."""

    def find_spec(self, name: str, path: object = None, target: object = None) -> None:
        if name == "matplotlib":
            raise ModuleNotFoundError("No module named 'matplotlib'", name=name)


def test_a_long_name_of_a_file_stays_within_the_picture(example: moxPY.Trial, tmp_path: Path):
    path = tmp_path / "second_walk_at_the_speed_that_the_patient_chose_before_treatment_began.c3d"
    example.write(path)
    axes = moxPY.read(path).plot.events()
    figure = axes.figure
    figure.draw_without_rendering()
    title = figure._suptitle.get_window_extent()
    assert path.name in figure._suptitle.get_text()
    assert title.x1 <= figure.bbox.x1
    assert title.y0 >= axes.get_window_extent().y1


def test_a_name_of_any_bytes_is_drawn(example: moxPY.Trial, tmp_path: Path):
    file = tmp_path / os.fsdecode(b"w\xe4lk.c3d")
    try:
        example.write(file)
    except OSError:
        pytest.skip("the file system takes no such name")
    axes = moxPY.read(file).plot.events()
    assert rendered(axes)
    assert axes.figure.get_suptitle() == "13 events · w?lk.c3d"


def test_control_characters_of_a_label_break_no_drawing(walk: moxPY.Trial, tmp_path: Path):
    walk.markers.rename({"LASI": "L\x01ASI", "RASI": "R\x1bASI"})
    axes = walk.plot.gaps(["L\x01ASI", "R\x1bASI", "C7"])
    axes.figure.savefig(tmp_path / "gaps.svg")
    ElementTree.parse(tmp_path / "gaps.svg")
    assert [tick.get_text() for tick in axes.get_yticklabels()] == ["L?ASI", "R?ASI", "C7"]


@pytest.mark.parametrize("what", ["channel", "angles", "forces", "butterfly", "emg"])
def test_a_trial_without_a_rate_is_not_drawn_over_time(walk: moxPY.Trial, what: str):
    moxPY.moxSetFrequency(walk, 0.0)
    picture = getattr(walk.plot, what)
    with pytest.raises(ValueError, match="a trial without a rate has no seconds"):
        picture("LASI") if what == "channel" else picture()


def test_a_trial_without_a_rate_has_all_other_pictures():
    trial = moxPY.Trial.new(frames=3, rate=0.0)
    trial.markers["LKNE"] = [[0.0, 0.0, float(height)] for height in range(3)]
    trial.events.add("Foot Strike", 1.0, context="Left")
    axes = trial.plot.sticks(frames=[2, 3])
    assert axes.get_xlabel() == "frame"
    assert [tick.get_text() for tick in axes.get_xticklabels()] == ["2", "3"]
    for each in (axes, trial.plot.gaps(), trial.plot.events()):
        assert rendered(each)
