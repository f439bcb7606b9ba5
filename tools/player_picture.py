"""Make the picture of the player that the documents begin with.

The page of the example trial is shown in Chromium without a window, at an instant when both feet
are loaded, and what it shows is the picture. Needs moxPY, chromium and its driver.

Usage: player_picture.py [PICTURE]
"""

from __future__ import annotations

import base64
import shutil
import sys
import tempfile
from io import BytesIO
from pathlib import Path

import moxPY

PROJECT = Path(__file__).resolve().parent.parent
EXAMPLE = PROJECT / "examples" / "gait_trial.c3d"
PICTURE = PROJECT / "docs" / "pictures" / "player.png"

_ADDRESS = "#frame=190&view=oblique&theme=light"
_WIDTH, _HEIGHT = 1280, 800
_COLOURS = 128


def make(picture: Path) -> None:
    """Show the page and take its picture."""
    from PIL import Image
    from selenium import webdriver

    options = webdriver.ChromeOptions()
    options.binary_location = _program("chromium")
    for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage"):
        options.add_argument(argument)
    options.add_argument("--force-color-profile=srgb")
    service = webdriver.ChromeService(executable_path=_program("chromedriver"))
    with tempfile.TemporaryDirectory() as folder:
        page = Path(folder) / "walk.html"
        with moxPY.read(EXAMPLE) as trial:
            trial.view(page)
        with webdriver.Chrome(options=options, service=service) as driver:
            size = {"width": _WIDTH, "height": _HEIGHT, "deviceScaleFactor": 1, "mobile": False}
            driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", size)
            driver.get(page.as_uri() + _ADDRESS)
            driver.execute_async_script(
                "const done = arguments[0];"
                "requestAnimationFrame(() => requestAnimationFrame(done));"
            )
            shot = driver.execute_cdp_cmd("Page.captureScreenshot", {"format": "png"})
    # A page is of few colours; so it takes a third of the room.
    image = Image.open(BytesIO(base64.b64decode(shot["data"]))).convert("RGB")
    image.quantize(_COLOURS, dither=Image.Dither.NONE).save(picture, optimize=True)


def _program(name: str) -> str:
    path = shutil.which(name)
    if path is None:
        raise SystemExit(f"player_picture.py: there is no {name} on the path")
    return path


if __name__ == "__main__":
    make(Path(sys.argv[1]) if len(sys.argv) > 1 else PICTURE)
