"""A browser without a window, driven by its own driver."""

from __future__ import annotations

import os
import shutil
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path
from typing import Any

import pytest

PROGRAMS = ("chromium", "chromedriver")

# "required" where a run that skips the tests in a browser must not count as one that passed.
WANTED = "MOXPY_BROWSER"

# Seconds for what takes less than one on a machine that does nothing else.
PATIENCE = 120

# Width, height, pixels of the screen for one of the page.
SIZES = {"phone": (390, 844, 2), "laptop": (1280, 800, 1), "projector": (1920, 1080, 1)}
ALL_SIZES = {**SIZES, "phone on its side": (844, 390, 2), "cell of a notebook": (760, 640, 1)}


def programs() -> list[str]:
    """The browser and its driver.

    Where there is none the test is skipped, or fails if the environment requires a browser. It is
    skipped, too, where the sanitizers are preloaded.
    """
    if "LD_PRELOAD" in os.environ:
        pytest.skip("a browser does not run with the sanitizers preloaded")
    found = {program: shutil.which(program) for program in PROGRAMS}
    missing = [program for program, path in found.items() if path is None]
    if missing and os.environ.get(WANTED) == "required":
        pytest.fail(f"no {' and no '.join(missing)} on the path, and {WANTED} is 'required'")
    if missing:
        pytest.skip(f"no {' and no '.join(missing)} on the path")
    return [str(path) for path in found.values()]


@contextmanager
def browser() -> Iterator[Any]:
    """A driver of a browser, where `programs` finds one."""
    chromium, chromedriver = programs()
    from selenium import webdriver

    options = webdriver.ChromeOptions()
    options.binary_location = chromium
    for argument in (
        "--headless=new",
        "--no-sandbox",  # which root, as in containers, has no use for
        "--disable-dev-shm-usage",
        "--force-color-profile=srgb",
        "--hide-scrollbars",
    ):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(
        options=options, service=webdriver.ChromeService(executable_path=chromedriver)
    )
    driver.set_script_timeout(PATIENCE)
    try:
        yield driver
    finally:
        driver.quit()


class Shown:
    """A page of the player in a browser."""

    def __init__(self, driver: Any, path: Path) -> None:
        self.driver = driver
        self._url = path.as_uri()

    def open(self, address: str = "", size: str = "laptop", scheme: str = "light") -> None:
        """Open the page anew, on a screen of a size, for somebody who likes a colour scheme."""
        width, height, ratio = ALL_SIZES[size]
        metrics = {"width": width, "height": height, "deviceScaleFactor": ratio, "mobile": False}
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", metrics)
        features = [{"name": "prefers-color-scheme", "value": scheme}]
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": features})
        self.driver.get("about:blank")
        self.driver.get(self._url + address)
        self.settle()

    def js(self, script: str, *arguments: Any) -> Any:
        """What a script gives."""
        return self.driver.execute_script(script, *arguments)

    def settle(self) -> None:
        """Wait until what was asked for is drawn."""
        self.driver.execute_async_script(
            "const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(done));"
        )

    def wait_for(self, condition: str) -> None:
        """Wait for a script to give true."""
        from selenium.webdriver.support.ui import WebDriverWait

        WebDriverWait(self.driver, PATIENCE, poll_frequency=0.05).until(
            lambda _: self.js(condition)
        )

    @property
    def frame(self) -> int:
        """The frame that is shown, as the file numbers it."""
        return int(self.js("return player.frame"))

    def element(self, selector: str) -> Any:
        from selenium.webdriver.common.by import By

        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def keys(self, *keys: str) -> None:
        """Press keys, wherever the focus is."""
        from selenium.webdriver.common.action_chains import ActionChains

        ActionChains(self.driver).send_keys(*keys).perform()
        self.settle()

    def click(self, selector: str) -> None:
        self.element(selector).click()
        self.settle()

    def pixel(self, left: float, top: float) -> tuple[int, int, int, int]:
        """Red, green, blue and opacity of the picture at a place in it."""
        script = """
            const canvas = document.getElementById("picture");
            const ratio = canvas.width / canvas.getBoundingClientRect().width;
            const place = [arguments[0] * ratio, arguments[1] * ratio].map(Math.round);
            return [...canvas.getContext("2d").getImageData(...place, 1, 1).data];
        """
        red, green, blue, opacity = self.js(script, left, top)
        return red, green, blue, opacity

    def colour(self, name: str) -> tuple[int, int, int, int]:
        """A colour of the style sheet."""
        script = "return getComputedStyle(document.documentElement).getPropertyValue(arguments[0])"
        text = self.js(script, f"--{name}").strip()
        return int(text[1:3], 16), int(text[3:5], 16), int(text[5:7], 16), 255

    def errors(self) -> list[str]:
        """What the console said since it was asked last, but for advice on how `pixel` reads."""
        messages = [entry["message"] for entry in self.driver.get_log("browser")]
        return [message for message in messages if "willReadFrequently" not in message]
