"""The site of the documents: which pages it has, and what its checks notice."""

from __future__ import annotations

from pathlib import Path

import moxPY
import pytest
from pages import built, function_pages, layers, object_pages
from pages.contents import CHAPTERS, PROJECT, Page, pages
from pages.links import rewritten
from test_includes import ALLOWED


def test_every_document_is_a_page_once() -> None:
    files = [page.file for page in pages()]
    assert len(files) == len(set(files))
    assert {*PROJECT.glob("docs/*.md"), PROJECT / "README.md"} <= set(files)


@pytest.mark.parametrize(
    "page", [page for chapter in CHAPTERS for page in chapter.pages], ids=lambda page: page.name
)
def test_every_page_says_in_its_first_sentence_what_it_is_about(page: Page) -> None:
    if not page.file.exists():
        pytest.skip("not written yet")
    assert page.title
    assert "runs as a test" not in page.summary
    assert len(page.summary) > 30, page.summary


def test_every_function_has_its_prototypes() -> None:
    listed = {
        name
        for family in function_pages.families().values()
        for module in function_pages.modules_of(family)
        for name in module.__all__
    }
    assert listed == set(moxPY.__all__) - {"data_store"}
    assert listed <= set(function_pages.prototypes())


def test_every_member_of_a_trial_is_in_its_reference() -> None:
    assert object_pages.unlisted() == set()


@pytest.mark.parametrize(
    ("text", "expected"),
    [
        ("[a](docs/x.md#part)", "[a](x.md#part)"),
        ("[docs/x.md](docs/x.md)", "[](x.md)"),
        ("[docs](docs/x.md)", "[docs](x.md)"),
        ("[a](LICENSE)", "a"),
        ("[a](https://example.org/x.md) [b](#below)", "[a](https://example.org/x.md) [b](#below)"),
        ("![a](docs/pictures/p.png)", "![a](pictures/p.png)"),
        ("```text\n[a](docs/x.md)\n```", "```text\n[a](docs/x.md)\n```"),
    ],
)
def test_links_of_a_file_lead_to_pages(text: str, expected: str) -> None:
    assert rewritten(text, PROJECT, {PROJECT / "docs" / "x.md": "x.md"}) == expected


@pytest.mark.parametrize(
    ("body", "fault"),
    [
        ('<a href="b.html#there">b</a> <a href="https://example.org">out</a>', None),
        ('<a href="c.html">c</a>', "a.html: the link to c.html leads nowhere"),
        ('<a href="b.html#here">b</a>', "a.html: b.html#here names no place on that page"),
        ('<a href="#here">b</a>', "a.html: #here names no place on that page"),
        ('<img src="p.png">', "a.html: p.png is not there"),
        ('<img src="data:image/png;base64,AA">', None),
        (
            '<script src="https://example.org/x.js"></script>',
            "a.html: fetches https://example.org/x.js",
        ),
        (
            '<link rel="stylesheet" href="//example.org/x.css">',
            "a.html: fetches //example.org/x.css",
        ),
    ],
)
def test_faults_of_a_site_are_found(tmp_path: Path, body: str, fault: str | None) -> None:
    (tmp_path / "a.html").write_text(body)
    (tmp_path / "b.html").write_text('<p id="there"></p>')
    assert built.faults(tmp_path) == ([] if fault is None else [fault])


def test_a_style_that_fetches_from_another_host_is_found(tmp_path: Path) -> None:
    (tmp_path / "a.css").write_text("@font-face { src: url('https://example.org/a.woff2') }")
    (tmp_path / "b.css").write_text('a { background: url("data:image/svg+xml;x") }')
    assert built.faults(tmp_path) == ["a.css: fetches https://example.org/a.woff2"]


def test_the_drawing_of_the_layers_is_the_one_that_is_kept() -> None:
    assert layers.PICTURE.read_text("utf-8") == layers.drawing()


def test_the_drawing_shows_every_folder_and_only_what_may_be_included() -> None:
    folders = {box.folder for box in layers.BOXES}
    assert folders == {*ALLOWED, "python/moxPY"} - {"examples/plugin"}
    # What a folder includes is drawn below it; strata and anvil are named without their folder.
    below = dict(layers.ARROWS) | {
        box.folder: "schema" for box in layers.BOXES if box.folder.startswith("plugins/")
    }
    for folder, included in ALLOWED.items():
        if folder not in folders:
            continue
        reached, at = {folder.removeprefix("platform/")}, folder
        while at in below:
            at = below[at]
            reached.add(at.removeprefix("platform/"))
        assert included <= reached, folder
