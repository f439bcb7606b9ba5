"""The page in a browser: what it shows, where, and what it does when it is touched."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from numpy.typing import NDArray
from support.chromium import ALL_SIZES, SIZES, Shown
from support.pinhole import Pinhole, pixel_of

Array = NDArray[np.float64]

AHEAD, LEFTWARDS, UPWARDS = (
    np.array([300.0, 0, 0]),
    np.array([0, 300.0, 0]),
    np.array([0, 0, 300.0]),
)


def projected(shown: Shown, place: Any) -> Array:
    """The pixel of a place, as seen by a camera that stands where the page says."""
    camera = shown.js("return player.camera")
    return pixel_of(place, Pinhole(**camera), *size_of_picture(shown))


def size_of_picture(shown: Shown) -> tuple[float, float]:
    width, height = shown.js(
        "const r = document.getElementById('picture').getBoundingClientRect();"
        "return [r.width, r.height]"
    )
    return width, height


# Every size, both schemes, first, middle and last frame.


@pytest.mark.parametrize("scheme", ["light", "dark"])
@pytest.mark.parametrize("size", SIZES)
def test_frames_are_drawn_whatever_the_screen(shown: Shown, size: str, scheme: str):
    shown.open("#frame=1", size, scheme)
    width, height = size_of_picture(shown)
    pictures = set()
    for frame in (1, 180, 360):
        shown.js("location.hash = arguments[0]", f"frame={frame}")
        shown.wait_for(f"return player.frame === {frame}")
        shown.settle()
        assert shown.element("#frame").get_attribute("value") == str(frame)
        assert shown.element("#seconds").text == f"{(frame - 1) / 100:.3f} s"
        head, foot = (marker_at(shown, label, frame) for label in ("C7", "LANK"))
        for left, top in (projected(shown, place) for place in (head, foot)):
            assert 0.0 < left < width
            assert 0.0 < top < height
        pictures.add(shown.js("return document.getElementById('picture').toDataURL()"))
    assert len(pictures) == 3
    assert shown.js("return document.documentElement.scrollWidth <= innerWidth")
    assert outside_of_the_screen(shown) == []


def marker_at(shown: Shown, label: str, frame: int) -> Any:
    """Where a marker is, read again from the file; over gaps what the figure's size suggests."""
    values = example().markers[label].values
    seen = np.flatnonzero(np.isfinite(values).all(axis=1))
    return values[seen[np.abs(seen - (frame - 1)).argmin()]]


def example() -> moxPY.Trial:
    return moxPY.read(Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d")


def outside_of_the_screen(shown: Shown) -> list[str]:
    """Visible controls that are cut, or under another one."""
    found: list[str] = shown.js("""
        const controls = [...document.querySelectorAll("#top button, #transport > *")];
        return controls.filter((control) => {
            const { left, right, top, bottom, width } = control.getBoundingClientRect();
            if (width === 0 || control.className === "spacer") return false;
            if (left < 0 || right > innerWidth || top < 0 || bottom > innerHeight) return true;
            const hit = document.elementFromPoint((left + right) / 2, (top + bottom) / 2);
            return !control.contains(hit);
        }).map((control) => control.id || control.textContent);
    """)
    return found


@pytest.mark.parametrize("size", ALL_SIZES)
def test_the_picture_has_room(shown: Shown, size: str):
    shown.open("#frame=180", size)
    width, height = size_of_picture(shown)
    assert width == ALL_SIZES[size][0]
    assert height >= min(280.0, 0.45 * ALL_SIZES[size][1])
    line = shown.element("#line").rect
    assert line["y"] + line["height"] <= ALL_SIZES[size][1]
    assert outside_of_the_screen(shown) == []


def test_on_a_phone_the_picture_stays_in_sight_of_its_switches(shown: Shown):
    shown.open("#frame=190", "phone")
    shown.click("#show")
    _, height = size_of_picture(shown)
    top = shown.element("#picture").rect["y"]
    drawer = shown.element("#drawer").rect
    assert drawer["y"] >= top + 0.9 * height
    assert drawer["y"] + drawer["height"] == pytest.approx(844, abs=1)
    assert shown.element(".marker:nth-child(4)").rect["y"] < 800
    shown.click("#show")
    assert not shown.element("#drawer").is_displayed()


@pytest.mark.parametrize("size", ALL_SIZES)
def test_what_is_shown_can_be_switched_whatever_the_screen(shown: Shown, size: str):
    shown.open("#frame=190", size)
    for name in ("sticks", "plates"):
        before = shown.js("return document.getElementById('picture').toDataURL()")
        shown.click("#show")
        shown.click(f"#switches input[name={name}]")
        shown.click("#show")
        assert not shown.element("#drawer").is_displayed()
        assert shown.js("return document.getElementById('picture').toDataURL()") != before


def test_a_phone_brings_no_keyboard_up_for_switches(shown: Shown):
    for is_touched, focus in ((True, "show"), (False, "filter")):
        touch = {"enabled": is_touched, "maxTouchPoints": 5}
        shown.driver.execute_cdp_cmd("Emulation.setTouchEmulationEnabled", touch)
        shown.open(size="phone")
        shown.click("#show")
        assert shown.js("return document.activeElement.id") == focus


@pytest.mark.parametrize("size", ALL_SIZES)
def test_no_number_of_a_curve_is_cut(shown: Shown, size: str):
    shown.open("#frame=190", size)
    shown.js("""
        const off = ".panel:nth-child(2) .chip:not([aria-pressed=true])";
        for (const chip of document.querySelectorAll(off)) chip.click();
    """)
    values = shown.js("""
        return [...document.querySelectorAll(".panel:nth-child(2) .value")].map((value) => {
            const { left, right, top, bottom } = value.getBoundingClientRect();
            const panel = value.closest("header").getBoundingClientRect();
            return left >= 0 && right <= innerWidth && top >= panel.top && bottom <= panel.bottom;
        });
    """)
    assert values == [True] * 6


@pytest.mark.parametrize("size", SIZES)
def test_letters_are_large_enough(shown: Shown, size: str):
    shown.open(size=size)
    smallest = shown.js("""
        const letters = [...document.querySelectorAll("button, select, output, #words, .lane")]
            .filter((element) => element.textContent.trim() && element.offsetWidth > 0);
        return Math.min(...letters.map((e) => parseFloat(getComputedStyle(e).fontSize)));
    """)
    assert smallest >= {"phone": 10.0, "laptop": 11.0, "projector": 13.0}[size]


@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_words_stand_out_from_what_is_behind_them(shown: Shown, scheme: str):
    shown.open(scheme=scheme)
    for behind in ("background", "surface"):
        for name in ("text", "dim", "left", "right", "force"):
            assert contrast(shown.colour(name), shown.colour(behind)) >= 4.5, (name, behind)


def contrast(one: tuple[int, ...], other: tuple[int, ...]) -> float:
    """The ratio of luminances, as accessibility guidelines define it."""

    def luminance(colour: tuple[int, ...]) -> float:
        parts = np.array(colour[:3]) / 255.0
        linear = np.where(parts <= 0.04045, parts / 12.92, ((parts + 0.055) / 1.055) ** 2.4)
        return float(linear @ [0.2126, 0.7152, 0.0722])

    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


# Colours for people who see fewer: deuteranopia and protanopia by the matrices of Viénot, Brettel
# and Mollon (1999), for linear RGB.
FEWER_COLOURS = {
    "deuteranopia": [[0.29275, 0.70725, 0.0], [0.29275, 0.70725, 0.0], [-0.02234, 0.02234, 1.0]],
    "protanopia": [[0.11238, 0.88762, 0.0], [0.11238, 0.88762, 0.0], [0.00401, -0.00401, 1.0]],
}


@pytest.mark.parametrize("eyes", FEWER_COLOURS)
@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_left_and_right_differ_for_everybody(shown: Shown, scheme: str, eyes: str):
    shown.open(scheme=scheme)
    seen = [
        np.array(FEWER_COLOURS[eyes]) @ (np.array(shown.colour(side)[:3]) / 255.0) ** 2.2
        for side in ("left", "right")
    ]
    assert np.abs(seen[0].clip(0, 1) ** (1 / 2.2) - seen[1].clip(0, 1) ** (1 / 2.2)).max() > 0.3


# The picture in space.


@pytest.mark.parametrize("size", SIZES)
@pytest.mark.parametrize("view", ["oblique", "right"])
def test_the_arrow_of_a_force_is_where_the_force_acts(shown: Shown, size: str, view: str):
    shown.open(f"#frame=170&view={view}", size)
    shown.keys("p", "b", "s", "t")  # without what has its colour, or crosses it
    wrench = moxPY.moxGetGroundReactionWrenches(example())[0]
    sample = 169 * 10
    point, force = wrench["P"][sample], wrench["F"][sample]
    start = projected(shown, point)
    end = projected(shown, point + force * shown.js("return player.arrowLength"))
    along = (end - start) / np.linalg.norm(end - start)
    assert np.linalg.norm(end - start) > 60.0
    colour = shown.colour("force")
    beside = np.array([-along[1], along[0]])
    for part in (0.0, 0.2, 0.4, 0.6, 0.8):
        place = start + part * (end - start)
        assert shown.pixel(*place) == colour, part
        if part:
            assert colour not in [shown.pixel(*(place + away * beside)) for away in (-9, 9)], part
    rem = shown.js("return parseFloat(getComputedStyle(document.documentElement).fontSize)") / 16
    assert shown.pixel(*(end - 5.0 * along)) == colour
    assert shown.pixel(*(end + 3.0 * along)) != colour
    assert shown.pixel(*(start - 1.5 * along)) == colour  # it begins with a dot
    assert shown.pixel(*(start - 6.0 * rem * along)) != colour


def test_the_camera_stands_upright_and_looks_from_where_it_says(shown: Shown):
    shown.open("#frame=180&view=right")
    middle = np.array([0.0, 0.0, 900.0])
    pixel = projected(shown, middle)
    # The walk leads along x, so who looks from the right sees x go to the right.
    assert projected(shown, middle + AHEAD)[0] > pixel[0] + 20
    assert projected(shown, middle + UPWARDS)[1] < pixel[1] - 20
    shown.keys("4")  # from the front, on the left is what is on the left side
    pixel = projected(shown, middle)
    assert projected(shown, middle + LEFTWARDS)[0] > pixel[0] + 20
    shown.keys("5")  # from above, x still goes to the right
    assert projected(shown, middle + AHEAD)[0] > projected(shown, middle)[0] + 20
    assert projected(shown, middle + LEFTWARDS)[1] < projected(shown, middle)[1] - 20


@pytest.mark.parametrize("view", ["oblique", "right", "left", "front", "top"])
def test_the_matrix_that_the_page_states_is_that_of_its_camera(shown: Shown, view: str):
    shown.open(f"#frame=170&view={view}")
    matrix = np.array(shown.js("return player.matrix")).reshape(3, 4)
    for label in ("C7", "LANK", "RFIN"):
        place = example().markers[label].values[169]
        u, v, w = matrix @ np.append(place, 1.0)
        assert w > 0.0
        assert [u / w, v / w] == pytest.approx(projected(shown, place), abs=1e-6)


def test_the_camera_follows_who_walks(shown: Shown):
    shown.open("#frame=20")
    width, _ = size_of_picture(shown)
    sacrum = example().markers["LPSI"].values
    for frame in (20, 340):
        shown.js("player.go(arguments[0])", frame)
        assert abs(projected(shown, sacrum[frame - 1])[0] - width / 2) < 0.1 * width
    matrix = shown.js("return player.matrix")
    shown.keys("f")
    shown.js("player.go(20)")
    fixed = shown.js("return player.matrix")
    shown.js("player.go(340)")
    assert shown.js("return player.matrix") == fixed != matrix


def test_a_marker_has_its_name_when_it_is_pointed_at_and_selected(shown: Shown):
    from selenium.webdriver.common.action_chains import ActionChains

    shown.open("#frame=150&view=right")
    place = example().markers["C7"].values[149]
    left, top = projected(shown, place)
    picture = shown.element("#picture")
    width, height = size_of_picture(shown)
    to_marker = (round(left - width / 2), round(top - height / 2))
    ActionChains(shown.driver).move_to_element_with_offset(picture, *to_marker).perform()
    shown.settle()
    assert picture.value_of_css_property("cursor") == "pointer"
    ActionChains(shown.driver).click().perform()
    shown.settle()
    label, *numbers, unit = shown.element("#words").text.splitlines()[1].split()
    assert (label, unit) == ("C7", "mm")
    assert [float(text.replace("−", "-")) for text in numbers] == pytest.approx(place, abs=0.1)
    shown.keys("\ue00c")  # Escape
    assert len(shown.element("#words").text.splitlines()) == 1


def written_texts(shown: Shown) -> list[dict[str, Any]]:
    """What is written into the picture when it is drawn anew, and the box of each text."""
    shown.js("""
        window.texts = [];
        const write = CanvasRenderingContext2D.prototype.fillText;
        CanvasRenderingContext2D.prototype.fillText = function (text, x, y) {
            write.call(this, text, x, y);
            if (this.canvas.id !== "picture") return;
            const { width } = this.measureText(text);
            const left = x - { left: 0, center: 0.5, right: 1 }[this.textAlign] * width;
            const height = parseFloat(this.font.match(/[\\d.]+px/)[0]);
            const top = y - { top: 0, middle: 0.5, bottom: 1 }[this.textBaseline] * height;
            window.texts.push({ text, left, right: left + width, top, bottom: top + height });
        };
        player.go(player.frame + 1);
        player.go(player.frame - 1);
    """)
    shown.wait_for("return window.texts.length > 0")
    texts: list[dict[str, Any]] = shown.js("return window.texts")
    return texts


@pytest.mark.parametrize("size", SIZES)
def test_names_do_not_cover_each_other_nor_the_strength_of_a_force(shown: Shown, size: str):
    shown.open("#frame=190", size)
    shown.keys("n")
    labels = set(example().markers.labels)
    texts = written_texts(shown)
    names = [text for text in texts if text["text"] in labels]
    strengths = [text for text in texts if text["text"].endswith(" N")]
    assert len(names) > 12
    assert len(strengths) == 2
    for index, name in enumerate(names):
        for other in [*names[index + 1 :], *strengths]:
            apart = (
                name["right"] <= other["left"]
                or other["right"] <= name["left"]
                or name["bottom"] <= other["top"] + 1.0
                or other["bottom"] <= name["top"] + 1.0
            )
            assert apart, (name, other)


def test_a_selected_marker_has_its_name_whatever_it_covers(shown: Shown):
    shown.open("#frame=190")
    shown.keys("n")
    labels = example().markers.labels
    texts = [text["text"] for text in written_texts(shown)]
    hidden = next(label for label in labels if label not in texts)
    shown.js("player.select(arguments[0])", hidden)
    assert hidden in [text["text"] for text in written_texts(shown)]


def test_axes_of_segments_are_where_the_rotations_have_them(
    driver: Any, sample: Any, tmp_path: Path
):
    trial = moxPY.read(sample("C3DRotationExample.c3d"), odd="ignore")
    trial.view(tmp_path / "segments.html")
    page = Shown(driver, tmp_path / "segments.html")
    page.errors()
    page.open("#frame=1")
    assert page.element("#words").text == "1 of 21 segments known"
    page.open("#frame=170")
    assert page.element("#words").text == "21 segments known"
    page.keys("b")
    for label in ("head_4X4", "pelvis_4X4", "l_shank_4X4"):
        matrix = trial.rotations[label][169]
        # The solid axis, x, some way out of what is drawn at the origin.
        places = [matrix[:3, 3] + length * matrix[:3, 0] for length in range(50, 111, 5)]
        colours = [page.pixel(*projected(page, place)) for place in places]
        assert page.colour("series-1") in colours, label
    assert page.errors() == []


def test_trails_lead_to_where_markers_were(shown: Shown):
    shown.open("#frame=150&view=right")
    shown.keys("b", "s", "p")
    shown.js("player.select('LBHD')")
    shown.settle()
    was = example().markers["LBHD"].values[149 - 12]
    around = [projected(shown, was) + np.array([0, away]) for away in (-1.5, -0.5, 0.5, 1.5)]
    assert max(shown.pixel(*place)[3] for place in around) > 20
    shown.keys("t")
    assert max(shown.pixel(*place)[3] for place in around) == 0


def test_a_gap_is_told_and_drawn_dashed(shown: Shown):
    shown.open("#frame=70&view=left")
    assert shown.element("#words").text == "39 of 40 markers seen"
    shown.js("player.select('LFIN')")
    shown.settle()
    assert shown.element("#words").text.splitlines()[1] == "LFIN  not seen"
    values = example().markers["LFIN"].values  # not seen from frame 61 to 82
    before, behind = values[59], values[82]
    middle = projected(shown, before + (behind - before) * 10 / 23)
    assert shown.pixel(*middle) != shown.colour("left")  # hollow
    around = [middle + 5.0 * np.array([np.cos(a), np.sin(a)]) for a in np.linspace(0, 6.2, 60)]
    assert any(shown.pixel(*place)[3] > 100 for place in around)
    shown.js("player.go(150)")
    shown.settle()
    assert shown.pixel(*projected(shown, values[149])) == shown.colour("left")


def test_the_mouse_orbits_pans_and_zooms(shown: Shown):
    from selenium.webdriver.common.action_chains import ActionChains, ScrollOrigin
    from selenium.webdriver.common.keys import Keys

    shown.open("#frame=150&view=right")
    picture = shown.element("#picture")
    place = example().markers["T10"].values[149]
    feet = place * [1, 1, 0]
    before = projected(shown, place)

    ActionChains(shown.driver).key_down(Keys.SHIFT).drag_and_drop_by_offset(
        picture, 60, -25
    ).key_up(Keys.SHIFT).perform()
    assert projected(shown, place) - before == pytest.approx([60, -25], abs=12)

    tall = np.linalg.norm(projected(shown, place) - projected(shown, feet))
    ActionChains(shown.driver).scroll_from_origin(
        ScrollOrigin.from_element(picture), 0, -300
    ).perform()
    assert np.linalg.norm(projected(shown, place) - projected(shown, feet)) > 1.2 * tall

    ahead = projected(shown, place + AHEAD)[0] - projected(shown, place)[0]
    ActionChains(shown.driver).drag_and_drop_by_offset(picture, 200, 0).perform()
    assert projected(shown, place + AHEAD)[0] - projected(shown, place)[0] < 0.9 * ahead


def test_two_fingers_zoom_and_one_orbits(shown: Shown):
    shown.open("#frame=150", "phone")
    left, top = shown.js(
        "const r = document.getElementById('picture').getBoundingClientRect();"
        "return [r.left + r.width / 2, r.top + r.height / 2]"
    )

    def touch(kind: str, *places: tuple[float, float]) -> None:
        points = [{"x": left + x, "y": top + y, "id": n} for n, (x, y) in enumerate(places)]
        event = {"type": kind, "touchPoints": points}
        shown.driver.execute_cdp_cmd("Input.dispatchTouchEvent", event)

    def tall() -> float:
        low, high = (projected(shown, [0, 0, z]) for z in (0, 1000))
        return float(np.linalg.norm(low - high))

    before = tall()
    touch("touchStart", (-40, 0), (40, 0))
    for spread in (60, 80, 100):
        touch("touchMove", (-spread, 0), (spread, 0))
    touch("touchEnd")
    assert tall() > 1.5 * before

    matrix = shown.js("return player.matrix")
    touch("touchStart", (0, 0))
    for way in (30, 60, 90):
        touch("touchMove", (way, 0))
    touch("touchEnd")
    assert shown.js("return player.matrix") != matrix


# Time.


def test_a_click_on_an_event_goes_to_its_frame(shown: Shown):
    shown.open()
    for side, name, frame in (("right", "Foot Strike", 131), ("left", "Foot Off", 142)):
        shown.click(f'.event[data-side="{side}"][data-frame="{frame}"]')
        assert shown.frame == frame
        label = shown.element(f'.event[data-frame="{frame}"]').get_attribute("aria-label")
        assert label == f"{side.title()} {name}, {(frame - 1) / 100:.3f} s, frame {frame}"
    tops = {
        side: shown.element(f'.event[data-side="{side}"]').location["y"]
        for side in ("left", "right")
    }
    assert tops["left"] < tops["right"]


def test_all_events_are_shown(shown: Shown):
    shown.open()
    frames = shown.js("return [...document.querySelectorAll('.event')].map(e => +e.dataset.frame)")
    assert frames == [round(event.time * 100) + 1 for event in example().events]


def test_keys_move_through_time(shown: Shown):
    from selenium.webdriver.common.keys import Keys

    shown.open("#frame=100")
    steps = [
        (Keys.ARROW_RIGHT, 101),
        (Keys.ARROW_LEFT, 100),
        (Keys.ARROW_UP, 131),
        (Keys.ARROW_DOWN, 87),
        (Keys.END, 360),
        (Keys.ARROW_RIGHT, 360),
        (Keys.HOME, 1),
    ]
    for key, frame in steps:
        shown.keys(key)
        assert shown.frame == frame
    shown.keys(" ")
    shown.wait_for("return player.isPlaying && player.frame > 5")
    shown.keys(" ")
    assert not shown.js("return player.isPlaying")


def test_a_slower_speed_is_slower_by_as_much(shown: Shown):
    shown.open("#frame=1")
    # Instants that the test gives, not those of a machine that has other work.
    shown.js("""
        window.instant = 0;
        performance.now = () => window.instant;
        window.waiting = [];
        window.requestAnimationFrame = (turn) => window.waiting.push(turn);
    """)
    for speed, frame in (("1", 51), ("0.1", 6), ("2", 101)):
        shown.js(
            """
            const select = document.getElementById("speed");
            select.value = arguments[0];
            select.dispatchEvent(new Event("change"));
            player.go(1);
            player.play();
            window.instant += 501;
            for (const turn of window.waiting.splice(0)) turn(window.instant);
            player.pause();
            """,
            speed,
        )
        assert shown.frame == frame


def test_what_is_typed_as_a_frame_is_shown(shown: Shown):
    from selenium.webdriver.common.keys import Keys

    shown.open()
    field = shown.element("#frame")
    for typed, frame in (("250", 250), ("9999", 360), ("-4", 1)):
        field.send_keys(Keys.CONTROL, "a", Keys.NULL, typed, Keys.ENTER)
        shown.settle()
        assert shown.frame == frame
        assert field.get_attribute("value") == str(frame)


def test_pulling_over_a_curve_moves_the_frame(shown: Shown):
    from selenium.webdriver.common.action_chains import ActionChains

    shown.open("#frame=1")
    curve = shown.element(".panel > canvas")
    chain = ActionChains(shown.driver).move_to_element(curve).click_and_hold()
    chain.move_by_offset(200, 0).release().perform()
    shown.settle()
    assert 180 < shown.frame < 300
    cursor = shown.js("return document.getElementById('cursor').getBoundingClientRect().left")
    middle = curve.rect["x"] + curve.rect["width"] / 2 + 200
    assert cursor == pytest.approx(middle, abs=3.0)


# Curves.


def test_curves_show_the_numbers_of_the_frame(shown: Shown):
    shown.open("#frame=120")
    trial = example()
    numbers = [element.text for element in legend(shown, 1)]
    knees = [trial.angles[label].x[119] for label in ("LKneeAngles", "RKneeAngles")]
    assert [float(number.replace("−", "-")) for number in numbers] == pytest.approx(knees, abs=0.01)


def legend(shown: Shown, panel: int) -> list[Any]:
    from selenium.webdriver.common.by import By

    return shown.driver.find_elements(By.CSS_SELECTOR, f".panel:nth-child({panel}) .number")


def test_any_channel_can_be_chosen(shown: Shown):
    from selenium.webdriver.support.select import Select

    shown.open("#frame=120")
    groups = shown.js(
        "return [...document.querySelector('.panel select').children].map((g) => g.label)"
    )
    assert groups == [
        "Angles",
        "Forces",
        "Moments",
        "Powers",
        "Ground reaction",
        "Analog channels",
        "Markers",
    ]
    shown.click("#add-curve")
    Select(shown.element(".panel:nth-child(3) select")).select_by_visible_text("Gastroc")
    shown.settle()
    trial = example()
    numbers = [float(element.text.replace("−", "-")) for element in legend(shown, 3)]
    muscles = [trial.analogs[label].values[1190] for label in ("LGastroc", "RGastroc")]
    assert numbers == pytest.approx(muscles, abs=0.001)
    shown.click(".panel:nth-child(3) .close")
    assert shown.js("return document.querySelectorAll('.panel').length") == 2


def test_components_are_chosen_one_by_one(shown: Shown):
    shown.open("#frame=120")
    shown.click(".panel:nth-child(1) .chip:nth-child(3)")
    numbers = [float(element.text.replace("−", "-")) for element in legend(shown, 1)]
    left, right = (example().angles[label].values[119] for label in ("LKneeAngles", "RKneeAngles"))
    assert numbers == pytest.approx([left[0], left[2], right[0], right[2]], abs=0.01)


# Light and dark.


def test_the_switch_turns_what_the_system_has(shown: Shown):
    for scheme, other in (("light", "dark"), ("dark", "light")):
        shown.open("#frame=170", scheme=scheme)
        before = shown.colour("background")
        shown.click("#theme")
        assert shown.colour("background") != before
        assert shown.element("#stage").value_of_css_property("background-color") == (
            "rgba({}, {}, {}, 1)".format(*shown.colour("background")[:3])
        )
        shown.open(f"#frame=170&theme={other}", scheme=scheme)
        assert shown.colour("background") != before


# Long trials, and pages in pages.


def test_a_trial_of_60000_frames_opens_and_plays(driver: Any, tmp_path: Path):
    frames = 60_000
    trial = moxPY.Trial.new(frames=frames, rate=100.0)
    time = np.arange(frames) / 100.0
    for number in range(100):
        height = 200.0 + 15.0 * number
        place = np.column_stack([600.0 * np.sin(time / 5.0), 0.0 * time, height + np.sin(time)])
        trial.markers[f"M{number:03}"] = place
    for number in range(400):
        trial.events.add("Foot Strike", 1.1 * number, context=("Left", "Right")[number % 2])
    page = Shown(driver, tmp_path / "long.html")
    trial.view(tmp_path / "long.html")
    page.errors()
    page.open("#frame=30000")
    assert page.frame == 30_000
    assert page.element("#words").text == "100 markers seen"
    page.js("player.play()")
    page.wait_for("return player.frame > 30050")
    page.js("player.pause(); player.go(60000)")
    page.settle()
    assert page.element("#seconds").text == "599.990 s"
    assert page.errors() == []


def test_in_a_notebook_the_page_works_in_its_cell(driver: Any, walk: moxPY.Trial, tmp_path: Path):
    notebook = tmp_path / "notebook.html"
    notebook.write_text(f"<!doctype html><body>{walk.view()._repr_html_()}", "utf-8")
    page = Shown(driver, notebook)
    page.errors()
    page.open()
    driver.switch_to.frame(0)
    page.click("#on")
    assert page.frame == 2
    page.click('.event[data-frame="131"]')
    assert page.frame == 131
    driver.switch_to.default_content()
    assert page.errors() == []


@pytest.mark.parametrize(
    "name",
    ["C3DRotationExample.c3d", "basketball.c3d", "gait-pig.c3d", "kyowadengyo.c3d", "type1.C3D"],
)
def test_recordings_of_other_makers_are_shown(driver: Any, sample: Any, tmp_path: Path, name: str):
    path = tmp_path / "page.html"
    trial = moxPY.read(sample(name), odd="ignore")
    trial.view(path)
    page = Shown(driver, path)
    page.errors()
    page.open(f"#frame={trial.first_frame + trial.frames // 2}")
    frame = trial.frames // 2
    width, height = size_of_picture(page)
    pixels = np.array([projected(page, place) for place in places_in(trial, frame)])
    assert np.isfinite(pixels).all()
    is_inside = ((pixels > 0.0) & (pixels < [width, height])).all(axis=1)
    assert is_inside.mean() > 0.9
    opacities = [page.pixel(*pixel)[3] for pixel in pixels[is_inside]]
    assert np.mean(np.array(opacities) == 255) > 0.9
    # And not all in one corner.
    assert np.ptp(pixels, axis=0).max() > 0.3 * height
    assert page.errors() == []


def places_in(trial: moxPY.Trial, frame: int) -> list[Array]:
    """Where something is seen: markers, or, where there are none, the origins of segments."""
    tracks = [trial.markers[label].values for label in trial.markers]
    tracks = tracks or [trial.rotations[label][:, :3, 3] for label in trial.rotations]
    return [track[frame] for track in tracks if np.isfinite(track[frame]).all()]


def test_a_trial_of_nothing_is_shown(driver: Any, tmp_path: Path):
    page = Shown(driver, tmp_path / "nothing.html")
    moxPY.Trial.new().view(tmp_path / "nothing.html")
    page.errors()
    page.open()
    page.keys(" ")
    assert page.errors() == []
