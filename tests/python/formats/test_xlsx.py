"""Excel workbooks, as openpyxl and pandas read them."""

from __future__ import annotations

import gc
import math
from pathlib import Path

import _moxPY
import numpy as np
import openpyxl
import pandas
import pytest
from formats.expected import expected_table
from moxPY.trial import Trial


def test_every_number_comes_back(any_trial: Trial, tmp_path: Path) -> None:
    any_trial.export(tmp_path / "walk.xlsx", parts=["markers"])
    frame = pandas.read_excel(tmp_path / "walk.xlsx", sheet_name="markers", dtype=np.float64)
    expected = expected_table(any_trial, "markers")
    # openpyxl writes 16 digits.
    np.testing.assert_allclose(frame.to_numpy(), expected, rtol=1e-15)


def test_sheets_are_the_parts(walk: Trial, tmp_path: Path) -> None:
    walk.export(tmp_path / "walk.xlsx", up="y", side="person")
    book = openpyxl.load_workbook(tmp_path / "walk.xlsx", read_only=True)
    assert book.sheetnames == [
        "trial", "markers", "angles", "forces", "moments", "powers", "analogs", "platforms",
        "events",
    ]  # fmt: skip
    facts = dict(book["trial"].iter_rows(values_only=True))
    assert (facts["up"], facts["side"], facts["threshold"]) == ("y", "person", 20)
    head, first, *_ = book["events"].iter_rows(values_only=True)
    assert head[:3] == ("time [s]", "label", "context")
    assert first[:3] == (0.2, "Foot Strike", "Right")
    book.close()


def test_a_label_is_no_formula(odd: Trial, tmp_path: Path) -> None:
    odd.export(tmp_path / "odd.xlsx", long=True, parts=["markers"])
    book = openpyxl.load_workbook(tmp_path / "odd.xlsx")
    cells = [row[1] for row in book["markers"].iter_rows()]
    formula = next(cell for cell in cells if cell.value == "=1+1")
    assert formula.data_type == "s"


def test_infinity_is_a_word_and_control_characters_are_blanks(tmp_path: Path) -> None:
    trial = Trial.new(frames=1)
    trial.markers["A\x07"] = [[math.inf, 1.0, math.nan]]
    trial.export(tmp_path / "odd.xlsx")
    book = openpyxl.load_workbook(tmp_path / "odd.xlsx")
    head, row = book["markers"].iter_rows(values_only=True)
    assert head[1] == "A .x [mm]"
    assert row == (0, "inf", 1, None)


def test_a_refused_workbook_begins_no_sheet(walk: Trial, tmp_path: Path) -> None:
    (tmp_path / "walk.xlsx").touch()
    with pytest.raises(FileExistsError):
        walk.export(tmp_path / "walk.xlsx", replace=False)
    gc.collect()  # an abandoned sheet complains when it goes, which fails the test


@pytest.mark.parametrize(
    ("frames", "markers", "long", "text"),
    [
        (1_048_576, 1, False, "1,048,577 rows, and Excel has 1,048,576"),
        (1, 5462, False, "16,387 columns, and Excel has 16,384"),
        (349_526, 1, True, "1,048,579 rows, and Excel has 1,048,576"),
    ],
)
def test_what_no_sheet_can_hold_is_refused(
    frames: int, markers: int, long: bool, text: str, tmp_path: Path
) -> None:
    trial = Trial.of(_moxPY.moxNewAcquisition(markers, frames))
    trial.rate = 100.0
    with pytest.raises(ValueError, match=rf"^the sheet 'markers' would have {text} at most; "):
        trial.export(tmp_path / "walk.xlsx", long=long)
    assert list(tmp_path.iterdir()) == []
