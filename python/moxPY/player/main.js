// The beginning: the parts are made and told of each other.

import { readTrial } from "./data.js";
import { Theme } from "./theme.js";
import { Clock } from "./clock.js";
import { VIEWS } from "./camera.js";
import { Lab } from "./lab.js";
import { Stage } from "./stage.js";
import { listenToPointers } from "./pointer.js";
import { Stretch } from "./stretch.js";
import { Timeline } from "./timeline.js";
import { Curves } from "./curves.js";
import { Controls } from "./controls.js";
import { listenToKeys } from "./keyboard.js";

/** The elements with an id, by what it is in camel case. */
function namedElements() {
    const found = {};
    for (const element of document.querySelectorAll("[id]")) {
        found[element.id.replace(/-(\w)/g, (_, letter) => letter.toUpperCase())] = element;
    }
    return found;
}

function begin() {
    const trial = readTrial();
    const elements = namedElements();
    const theme = new Theme();
    const clock = new Clock(trial.frames, trial.rate, trial.firstFrame);
    const lab = new Lab(trial, clock);
    const stage = new Stage(elements.picture, trial, clock, lab, theme);
    const stretch = new Stretch(clock);
    const timeline = new Timeline(elements, trial, clock, stretch, stage, theme);
    const upAxis = lab.up.findIndex((x) => x !== 0);
    const { panels, addCurve } = elements;
    const curves = new Curves(panels, addCurve, trial, clock, stretch, theme, upAxis);
    const controls = new Controls(elements, trial, stage, theme);
    describe(elements, trial, clock, curves);

    function measure() {
        const rem = theme.rem;
        const { width } = elements.tracks.querySelector("#line").getBoundingClientRect();
        stretch.left =
            parseFloat(getComputedStyle(elements.line).getPropertyValue("--gutter")) * rem;
        stretch.width = Math.max(1, width - stretch.left - 0.9 * rem);
        redraw();
    }
    function redraw() {
        stage.refresh();
        timeline.draw();
        curves.draw();
        timeline.tick();
    }
    clock.listeners.push(() => {
        stage.refresh();
        timeline.tick();
        curves.tick();
    });
    stage.listeners.push(() => {
        elements.words.replaceChildren(...stage.words().map(lineOf));
        elements.scales.textContent = stage.scales().join(" · ");
    });
    stage.selecting.push(() => timeline.draw());
    stretch.listeners.push(() => {
        timeline.draw();
        curves.draw();
        elements.cursor.style.transform = `translateX(${stretch.x(clock.frame)}px)`;
    });
    theme.listeners.push(redraw);
    new ResizeObserver(measure).observe(elements.tracks);
    new ResizeObserver(() => stage.refresh()).observe(elements.picture);
    listenToPointers(stage);
    listenToKeys({ clock, timeline, stage, controls, stretch, theme, elements });
    listenToHeight(elements);
    elements.whole.addEventListener("click", () => stretch.whole());
    elements.nearer.addEventListener("click", () => stretch.zoom(0.6));
    elements.farther.addEventListener("click", () => stretch.zoom(1 / 0.6));
    listenToAddress(clock, stage, theme);
    measure();
    stage.draw();

    // For whoever puts the page into another one.
    window.player = {
        trial,
        go: (frame) => clock.go(frame - clock.firstFrame),
        play: () => clock.play(),
        pause: () => clock.pause(),
        view: (name) => stage.view(name),
        select: (label) =>
            stage.select(trial.markers.findIndex((marker) => marker.label === label)),
        get frame() {
            return clock.frame + clock.firstFrame;
        },
        get isPlaying() {
            return clock.isPlaying;
        },
        /** What takes places to pixels of the canvas, row by row; see camera.js. */
        get matrix() {
            return stage.matrix();
        },
        /** Where the camera stands, what it looks at, and its angle of view across the shorter side. */
        get camera() {
            return stage.viewpoint();
        },
        /** The length of an arrow for a unit of force. */
        get arrowLength() {
            return stage.arrows.length;
        },
    };
}

function lineOf(text) {
    const line = document.createElement("div");
    line.textContent = text;
    return line;
}

function describe(elements, trial, clock, curves) {
    elements.name.textContent = trial.name;
    const seconds = (trial.frames / clock.rate).toFixed(2);
    elements.about.textContent = `${trial.frames} frames · ${Number(clock.rate.toPrecision(6))} Hz · ${seconds} s`;
    const worst = Math.max(0, ...trial.markers.map(({ track }) => track.precision));
    const digits = worst > 0 ? Number(worst.toPrecision(1)) : 0;
    elements.precision.textContent = trial.markers.length
        ? `Places of markers are within ${digits} ${trial.unit || "units"} of those in the file. `
        : "";
    document.body.dataset.curves = String(curves.entries.length > 0);
    elements.picture.setAttribute("aria-label", `${trial.name} in space`);
}

/** `#frame=120&view=right&theme=dark`: what the page shows when it opens. */
function listenToAddress(clock, stage, theme) {
    const read = () => {
        const wanted = new URLSearchParams(location.hash.slice(1));
        if (wanted.has("theme")) theme.choose(wanted.get("theme"));
        if (Object.hasOwn(VIEWS, wanted.get("view") ?? "")) stage.view(wanted.get("view"));
        const frame = Number(wanted.get("frame"));
        if (wanted.get("frame") && Number.isFinite(frame)) clock.go(frame - clock.firstFrame);
        stage.refresh();
    };
    addEventListener("hashchange", read);
    read();
}

/** The bar between picture and curves can be moved. */
function listenToHeight({ bar, tracks }) {
    const set = (height) => {
        const most = innerHeight - 12 * 16;
        document.documentElement.style.setProperty(
            "--tracks",
            `${Math.min(most, Math.max(90, height))}px`,
        );
    };
    bar.addEventListener("pointerdown", (event) => {
        bar.setPointerCapture(event.pointerId);
        const [from, height] = [event.clientY, tracks.getBoundingClientRect().height];
        const move = (next) => set(height + from - next.clientY);
        bar.addEventListener("pointermove", move);
        bar.addEventListener("pointerup", () => bar.removeEventListener("pointermove", move), {
            once: true,
        });
    });
    bar.addEventListener("keydown", (event) => {
        const step = { ArrowUp: 24, ArrowDown: -24 }[event.key];
        if (!step) return;
        set(tracks.getBoundingClientRect().height + step);
        event.stopPropagation();
        event.preventDefault();
    });
}

begin();
