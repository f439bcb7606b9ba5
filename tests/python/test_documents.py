"""What the documents show is what happens."""

from __future__ import annotations

import contextlib
import doctest
import io
import re
import shutil
from pathlib import Path

import moxPY
import pytest

REPOSITORY = Path(__file__).resolve().parents[2]


def text_of(document: str) -> str:
    return (REPOSITORY / document).read_text("utf-8")


def blocks(document: str, language: str) -> list[str]:
    """The fenced blocks of a document that are marked with a language."""
    return re.findall(rf"^```{language}\n(.*?)^```", text_of(document), re.DOTALL | re.MULTILINE)


def documented_bytes(document: str) -> dict[int, bytes]:
    """Bytes by offset, from the indented lines that begin with an offset of four digits."""
    lines = re.findall(r"^    ([0-9A-F]{4})  ((?:[0-9A-F]{2} ?)+)", text_of(document), re.MULTILINE)
    return {int(offset, 16): bytes.fromhex(digits) for offset, digits in lines}


def test_the_scripts_print_what_the_readme_says(tmp_path: Path, monkeypatch: pytest.MonkeyPatch):
    (tmp_path / "examples").mkdir()
    shutil.copy(REPOSITORY / "examples" / "gait_trial.c3d", tmp_path / "examples")
    monkeypatch.chdir(tmp_path)
    scripts, printed = blocks("README.md", "python"), blocks("README.md", "text")
    assert len(scripts) == len(printed) == 2
    for script, text in zip(scripts, printed, strict=True):
        with contextlib.redirect_stdout(io.StringIO()) as output:
            exec(script, {})
        assert output.getvalue() == text
    assert moxPY.read("steps.c3d").frames == 201
    assert Path("knees.png").stat().st_size > 10_000
    with moxPY.moxReadAcquisition("renamed.c3d") as renamed:
        assert "LeftFinger" in moxPY.moxGetMarkers(renamed)[0]


def test_the_examples_about_reading_are_true(monkeypatch: pytest.MonkeyPatch):
    monkeypatch.chdir(REPOSITORY)
    examples = doctest.DocTestParser().get_doctest(
        "\n".join(blocks("docs/reading.md", "pycon")), {}, "docs/reading.md", None, 0
    )
    report: list[str] = []
    results = doctest.DocTestRunner().run(examples, out=report.append)
    assert results.attempted > 20
    assert results.failed == 0, "".join(report)


def test_the_worked_example_of_the_format_is_a_file(tmp_path: Path):
    content = bytearray(3 * 512)
    for offset, part in documented_bytes("docs/c3d.md").items():
        assert not any(content[offset : offset + len(part)])
        content[offset : offset + len(part)] = part
    file = tmp_path / "worked.c3d"
    file.write_bytes(content)
    trial = moxPY.moxReadAcquisition(str(file))
    values, info = moxPY.moxGetPoint(trial, "LASI")
    assert values[0].tolist() == pytest.approx([123.4, -5.0, 900.0])
    assert values[1].tolist() == pytest.approx([float("nan")] * 3, nan_ok=True)
    assert (info["units"], info["frequency"]) == ("mm", 100.0)
    values, info = moxPY.moxGetAnalog(trial, "Fz1")
    assert values.tolist() == [45.0, 50.0, -1.0, 0.0]
    assert (info["units"], info["frequency"]) == ("N", 200.0)


def without_indents(text: str) -> str:
    return "\n".join(line.strip() for line in text.splitlines())


def test_the_example_of_a_new_function_is_what_the_sources_say():
    _, found, rest = text_of("CONTRIBUTING.md").partition("\n## Adding a function\n")
    recipe = rest.partition("\n## ")[0]
    assert found
    names = [name for name in re.findall(r"`([\w/]+\.\w+)`", recipe) if "/" in name]
    sources = [without_indents(text_of(name)) for name in names]
    examples = re.findall(r"^```\w+\n(.*?)^```", recipe, re.DOTALL | re.MULTILINE)
    assert len(examples) >= 5
    others = [
        example
        for example in examples
        if not any(without_indents(example) in source for source in sources)
    ]
    assert others == []


@pytest.mark.parametrize(
    "document",
    [
        "README.md",
        "CONTRIBUTING.md",
        "tests/README.md",
        *sorted(Path(REPOSITORY).glob("docs/*.md")),
    ],
)
def test_links_lead_to_files(document: str | Path):
    folder = (REPOSITORY / document).parent
    links = re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", text_of(str(document)))
    assert [link for link in links if not (folder / link).exists()] == []
