"""A report in a browser: on every screen, light and dark, and with its player."""

from __future__ import annotations

import base64
import io
import re
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from matplotlib.image import imread
from support.chromium import SIZES, Shown


@pytest.fixture
def shown(driver: Any, example_page: Path) -> Iterator[Shown]:
    """The report in the browser; the console must have nothing to say."""
    page = Shown(driver, example_page)
    page.errors()
    yield page
    assert page.errors() == []


@pytest.mark.parametrize("scheme", ["light", "dark"])
@pytest.mark.parametrize("size", SIZES)
def test_nothing_sticks_out_of_the_page(shown: Shown, size: str, scheme: str):
    shown.open("", size, scheme)
    assert shown.js("return document.documentElement.scrollWidth <= innerWidth")
    outside = shown.js("""
        const { left, right } = document.querySelector("main").getBoundingClientRect();
        return [...document.querySelectorAll("h1, h2, td, th, p, li, figcaption, iframe, nav a")]
            .map((element) => [element.textContent, element.getBoundingClientRect()])
            .filter(([, box]) => box.left < left || box.right > right).map(([text]) => text);
    """)
    assert outside == []


@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_words_stand_out_and_pictures_have_the_colour_of_the_page(shown: Shown, scheme: str):
    shown.open("", "laptop", scheme)
    colours = shown.js("""
        const style = getComputedStyle(document.documentElement);
        return ["paper", "text", "dim", "link"].map((name) =>
            style.getPropertyValue(`--${name}`).trim());
    """)
    paper, *words = map(rgb, colours)
    assert (luminance(paper) > 0.5) == (scheme == "light")
    for word in words:
        low, high = sorted((luminance(paper), luminance(word)))
        assert (high + 0.05) / (low + 0.05) >= 4.5
    shown.js("document.getElementById('angles').scrollIntoView()")
    shown.settle()
    left, top = shown.js("""
        const box = document.querySelector("#angles svg").getBoundingClientRect();
        return [Math.round(box.left), Math.round(box.top)];
    """)
    screen = imread(io.BytesIO(shown.driver.get_screenshot_as_png()))[..., :3] * 255.0
    for x in (3, -6):  # in the picture, and beside it
        assert screen[top + 20, left + x] == pytest.approx(paper, abs=1.5)


def rgb(colour: str) -> list[int]:
    digits = colour.lstrip("#")
    digits = "".join(2 * digit for digit in digits) if len(digits) == 3 else digits
    return list(bytes.fromhex(digits))


def luminance(colour: list[int]) -> float:
    """As accessibility guidelines define it."""
    parts = np.array(colour) / 255.0
    linear = np.where(parts <= 0.04045, parts / 12.92, ((parts + 0.055) / 1.055) ** 2.4)
    return float(linear @ [0.2126, 0.7152, 0.0722])


def test_the_player_inside_plays(shown: Shown):
    shown.open("#player")
    frame = shown.element("#player iframe")
    assert 400 < frame.size["height"] < SIZES["laptop"][1]
    shown.driver.switch_to.frame(frame)
    try:
        assert shown.js("return player.trial.name") == "gait_trial.c3d"
        shown.js("player.go(120)")
        shown.wait_for("return player.frame === 120")
        shown.js("player.play()")
        shown.wait_for("return player.frame > 125")
    finally:
        shown.driver.switch_to.default_content()


def test_links_lead_to_their_sections(shown: Shown):
    shown.open()
    shown.element("nav a[href='#forces']").click()
    shown.wait_for("return document.getElementById('forces').getBoundingClientRect().top < 400")


def test_on_paper_it_is_light_and_without_the_player(shown: Shown):
    shown.open("", "laptop", "dark")
    printed = shown.driver.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True})
    file = base64.b64decode(printed["data"])
    assert 5 <= len(re.findall(rb"/Type /Page\b", file)) <= 9
    shown.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
    try:
        look = "return getComputedStyle(document.querySelector(arguments[0]))[arguments[1]]"
        assert shown.js(look, "#player", "display") == "none"
        assert shown.js(look, "nav", "display") == "none"
        assert shown.js(look, "main", "backgroundColor") == "rgb(255, 255, 255)"
        assert shown.js(look, "figure svg", "filter") == "none"
    finally:
        shown.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})
