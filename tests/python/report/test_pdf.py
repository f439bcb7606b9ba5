"""The same as pages of paper, by matplotlib."""

from __future__ import annotations

import re
import sys
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from matplotlib.backends import backend_pdf
from matplotlib.text import Text
from moxPY.report import SECTIONS
from moxPY.report.paper import HEIGHT, WIDTH
from report.test_html import NoMatplotlib

MARGIN = 0.5  # inches that stay empty, on each side


class Sheets(backend_pdf.PdfPages):
    """Remembers of each page its texts and where they lie, in inches from its corner."""

    pages: list[list[tuple[str, Any]]]

    def savefig(self, figure: Any = None, **options: Any) -> None:
        page = options.get("bbox_inches")
        left, bottom = (page.x0, page.y0) if page else (0.0, 0.0)
        figure.draw_without_rendering()
        found = []
        for text in figure.findobj(Text):
            if text.get_visible() and text.get_text().strip():
                box = text.get_window_extent().transformed(figure.dpi_scale_trans.inverted())
                found.append((text.get_text(), box.translated(-left, -bottom)))
        self.pages.append(found)
        super().savefig(figure, **options)


@pytest.fixture
def pages(monkeypatch: pytest.MonkeyPatch) -> list[list[tuple[str, Any]]]:
    """The pages that are written, one after the other."""
    found: list[list[tuple[str, Any]]] = []
    monkeypatch.setattr(Sheets, "pages", found, raising=False)
    monkeypatch.setattr(backend_pdf, "PdfPages", Sheets)
    return found


def texts(page: list[tuple[str, Any]]) -> list[str]:
    return [text for text, _ in page]


def page_sizes(file: Path) -> list[list[float]]:
    boxes = re.findall(rb"/MediaBox \[ ([\d. ]+) \]", file.read_bytes())
    return [[float(number) for number in box.split()] for box in boxes]


def test_all_sections_but_the_player_are_pages(walk: moxPY.Trial, tmp_path: Path, pages: Any):
    file = walk.report(tmp_path / "walk.pdf")
    assert len(page_sizes(file)) == len(pages) == 8
    for size in page_sizes(file):
        assert size == pytest.approx([0, 0, WIDTH * 72, HEIGHT * 72], abs=0.5)
    titles = [
        "Recording", "Checks", "Gaps", "Events and gait", "Angles", "Moments", "Powers",
        "Force on the person over time", "Force vectors on the person at the centre of pressure",
        "Electromyography",
    ]  # fmt: skip
    found = [text for page in pages for text in texts(page) if text in titles]
    assert found == titles
    for number, page in enumerate(pages, 1):
        assert {"Walker · gait_trial.c3d", str(number)} <= set(texts(page))
    assert "In motion" not in {text for page in pages for text in texts(page)}


def test_what_is_said_is_what_the_page_of_html_says(walk: moxPY.Trial, tmp_path: Path, pages: Any):
    walk.report(tmp_path / "walk.pdf", without=["angles", "moments", "powers", "forces", "emg"])
    said = {text for page in pages for text in texts(page)}
    assert {"Walker", "3.60 s (360 frames, 1 to 360)", "97–110, 211–217", "0.65 ± 0.00"} <= said


def test_nothing_stands_on_the_edge_of_the_paper(walk: moxPY.Trial, tmp_path: Path, pages: Any):
    walk.metadata["MANUFACTURER"]["COMPANY"] = "A " + "very " * 40 + "long" * 40 + " name"
    walk.markers.rename({"LFIN": "A_marker_with_a_long_name"})
    others = [walk.copy()]
    walk.report(tmp_path / "walk.pdf", others=others, without=["forces", "angles", "emg"])
    outside = [
        (text, box)
        for page in pages
        for text, box in page
        # Axes keep numbers beyond their ends, which are not drawn.
        if not re.fullmatch(r"[−\d.]+", text)
        and (box.x0 < MARGIN or box.x1 > WIDTH - MARGIN or box.y0 < 0.2 or box.y1 > HEIGHT - MARGIN)
    ]
    assert not outside


def test_a_long_table_goes_on_below_its_heads(
    walk: moxPY.Trial, tmp_path: Path, pages: Any, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.setattr("moxPY.report.findings._ROWS", 1000)
    trial = moxPY.Trial.new(frames=20, rate=100.0)
    for number in range(90):
        values = np.arange(60.0).reshape(20, 3)
        values[5] = np.nan
        trial.markers[f"M{number}"] = values
    left_out = [name for name in SECTIONS if name != "gaps"]
    trial.report(tmp_path / "gaps.pdf", without=left_out)
    with_rows = [page for page in pages if "6" in texts(page) and "1 (5 %)" in texts(page)]
    assert len(with_rows) == 2
    for page in with_rows:
        assert texts(page).count("Frames not seen") == 1
    rows = [text for page in with_rows for text in texts(page) if text == "1 (5 %)"]
    assert len(rows) == 90


def test_a_title_stands_on_the_page_of_its_picture(walk: moxPY.Trial, tmp_path: Path, pages: Any):
    others = [walk.copy()]
    left_out = [name for name in SECTIONS if name not in ("recording", "checks", "gaps", "gait")]
    walk.report(tmp_path / "walk.pdf", others=others, without=left_out)
    for title, axis in (("Gaps over the frames", "frame"), ("Events", "time (s)")):
        for name in ("1. gait_trial.c3d", "2. gait_trial.c3d"):
            (page,) = [page for page in pages if f"{title}: {name}" in texts(page)]
            top = next(box.y0 for text, box in page if text == f"{title}: {name}")
            assert any(text == axis and box.y1 < top for text, box in page)


def test_matplotlib_is_needed(walk: moxPY.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch):
    for name in [name for name in sys.modules if name.partition(".")[0] == "matplotlib"]:
        monkeypatch.delitem(sys.modules, name)
    monkeypatch.setattr(sys, "meta_path", [NoMatplotlib(), *sys.meta_path])
    with pytest.raises(ImportError, match=r'^this needs matplotlib: pip install "moxPY\[plot\]"$'):
        walk.report(tmp_path / "walk.pdf")
    assert not list(tmp_path.iterdir())
