// Curves over time: any channel, left and right over each other, below the time line.

import { niceBelow, written } from "./data.js";
import { fitted } from "./theme.js";
import { listenForTime } from "./stretch.js";

const KINDS = {
    angles: "Angles",
    forces: "Forces",
    moments: "Moments",
    powers: "Powers",
    ground: "Ground reaction",
    analogs: "Analog channels",
    markers: "Markers",
};
const DASHES = [[], [6, 3], [1.5, 3]]; // of the components x, y, z
const LEAST_ROOM = 8; // pixels for an event
const SERIES = ["series-1", "series-2", "series-3", "series-4"];

/** What can be chosen: channels by kind and name, both sides of one name together. */
export function entriesOf(trial) {
    const entries = new Map();
    const add = (kind, name, curve) => {
        const key = `${kind}:${name}`;
        const entry = entries.get(key) ?? { key, kind, name, curves: [], unit: curve.unit };
        entry.curves.push({ ...curve });
        entry.components = curve.components;
        entries.set(key, entry);
    };
    for (const curve of trial.curves) {
        // Both sides belong together only if they are alike.
        const partner = entries.get(`${curve.kind}:${curve.name}`);
        const isAlike = !partner || partner.components.length === curve.components.length;
        add(curve.kind, isAlike ? curve.name : curve.label, curve);
    }
    for (const plate of trial.plates) {
        const { label, unit, force } = plate;
        add("ground", "All plates", {
            label,
            unit,
            side: "",
            track: force,
            ratio: 1,
            components: ["x", "y", "z"],
        });
    }
    for (const { label, name, side, track } of trial.markers) {
        const components = ["x", "y", "z"];
        add("markers", name, { label, side, track, unit: trial.unit, ratio: 1, components });
    }
    return [...entries.values()];
}

/** What somebody would look at first. */
export function firstEntries(entries) {
    const of = (kind, pattern) =>
        entries.find((entry) => entry.kind === kind && pattern.test(entry.name));
    const wanted = [
        of("angles", /knee/i) ?? of("angles", /./),
        of("ground", /./) ?? of("moments", /knee/i) ?? of("analogs", /./),
    ].filter(Boolean);
    return wanted.length ? wanted : entries.slice(0, 1);
}

export class Curves {
    constructor(place, adder, trial, clock, stretch, theme, upAxis) {
        Object.assign(this, { place, trial, clock, stretch, theme, upAxis });
        this.entries = entriesOf(trial);
        this.panels = [];
        adder.hidden = !this.entries.length;
        adder.addEventListener("click", () => {
            const used = new Set(this.panels.map((panel) => panel.entry));
            const next = this.entries.find((entry) => !used.has(entry)) ?? this.entries[0];
            this.add(next).select.focus(); // which brings it into view
        });
        for (const entry of firstEntries(this.entries)) this.add(entry);
    }

    add(entry) {
        const panel = new Panel(this, entry);
        this.panels.push(panel);
        this.place.append(panel.element);
        this.draw();
        return panel;
    }

    remove(panel) {
        this.panels = this.panels.filter((each) => each !== panel);
        panel.element.remove();
        this.draw();
    }

    draw() {
        for (const panel of this.panels) panel.draw();
    }

    tick() {
        for (const panel of this.panels) panel.tick();
    }
}

function made(tag, className, parent) {
    const element = document.createElement(tag);
    if (className) element.className = className;
    parent?.append(element);
    return element;
}

class Panel {
    constructor(curves, entry) {
        this.curves = curves;
        this.element = made("section", "panel");
        const head = made("header", "", this.element);
        this.select = made("select", "", head);
        this.select.setAttribute("aria-label", "Curve");
        this.chips = made("div", "chips", head);
        this.legend = made("div", "legend", head);
        const close = made("button", "close", head);
        close.type = "button";
        close.title = "Remove this curve";
        close.setAttribute("aria-label", close.title);
        close.textContent = "×";
        close.addEventListener("click", () => curves.remove(this));
        this.canvas = made("canvas", "", this.element);
        this.fillSelect();
        this.select.addEventListener("change", () => {
            this.choose(curves.entries[Number(this.select.value)]);
            this.draw();
        });
        listenForTime(this.canvas, curves.stretch, curves.clock, false);
        this.choose(entry);
    }

    fillSelect() {
        for (const [kind, title] of Object.entries(KINDS)) {
            const group = document.createElement("optgroup");
            group.label = title;
            this.curves.entries.forEach((entry, index) => {
                if (entry.kind !== kind) return;
                const option = made("option", "", group);
                option.value = index;
                option.textContent = entry.kind === "ground" ? "Ground reaction" : entry.name;
            });
            if (group.childElementCount) this.select.append(group);
        }
    }

    choose(entry) {
        this.entry = entry;
        this.select.value = String(this.curves.entries.indexOf(entry));
        const isInSpace = entry.kind === "ground" || entry.kind === "markers";
        const isBand = entry.components[0] === "least";
        this.components = isBand ? [0, 1] : [isInSpace ? this.curves.upAxis : 0];
        // A power has one number, in the last place of three.
        if (entry.kind === "powers") this.components = [this.fullest()];
        this.makeChips(isBand || entry.components.length < 2);
        this.measure();
        this.makeLegend();
    }

    /** The component that changes most. */
    fullest() {
        const spans = this.entry.components.map((_, component) => {
            const ranges = this.entry.curves.map(({ track }) => track.range([component]));
            return Math.max(...ranges.map((range) => (range ? range[1] - range[0] : 0)));
        });
        return spans.indexOf(Math.max(...spans));
    }

    makeChips(isSingle) {
        this.chips.replaceChildren();
        if (isSingle) return;
        this.entry.components.forEach((name, component) => {
            const chip = made("button", "chip", this.chips);
            chip.type = "button";
            chip.textContent = name;
            const show = () =>
                chip.setAttribute("aria-pressed", String(this.components.includes(component)));
            show();
            chip.addEventListener("click", () => {
                const others = this.components.filter((each) => each !== component);
                if (others.length === this.components.length) others.push(component);
                if (!others.length) return;
                this.components = others.sort();
                show();
                this.measure();
                this.makeLegend();
                this.draw();
            });
        });
    }

    measure() {
        let [low, high] = [Infinity, -Infinity];
        for (const { track } of this.entry.curves) {
            const range = track.range(this.components);
            if (!range) continue;
            low = Math.min(low, range[0]);
            high = Math.max(high, range[1]);
        }
        if (!(low <= high)) [low, high] = [0, 1];
        const margin = (high - low || Math.abs(high) || 1) * 0.07;
        this.low = low - margin;
        this.high = high + margin;
        this.step = niceBelow((high - low || 1) / 100) / 10;
    }

    get lines() {
        const { curves } = this.entry;
        const isBand = this.entry.components[0] === "least";
        const components = isBand ? [0] : this.components;
        return curves.flatMap((curve, index) =>
            components.map((component) => ({ curve, component, index, isBand })),
        );
    }

    colour({ curve, index }) {
        const { theme } = this.curves;
        return curve.side ? theme.side(curve.side) : theme[SERIES[index % SERIES.length]];
    }

    makeLegend() {
        this.legend.replaceChildren();
        const hasSides = this.entry.curves.some((curve) => curve.side);
        this.values = this.lines.map((line) => {
            const item = made("span", "value", this.legend);
            const key = made("canvas", "key", item);
            const { curve, component } = line;
            const short = { left: "L", right: "R" }[curve.side];
            const name =
                hasSides && short ? short : this.entry.kind === "ground" ? curve.label : "";
            const axis =
                this.components.length > 1 && !line.isBand ? this.entry.components[component] : "";
            const text = [name, axis].filter(Boolean).join(" ");
            if (text) made("b", "", item).textContent = text;
            item.title = curve.label;
            return { line, key, number: made("span", "number", item) };
        });
        if (this.entry.unit) made("span", "unit", this.legend).textContent = this.entry.unit;
        this.tick();
    }

    /** The numbers at the frame that is shown. */
    tick() {
        const { frame } = this.curves.clock;
        for (const { line, number } of this.values) {
            const { curve, component, isBand } = line;
            const at = (which) => written(curve.track.value(which, frame * curve.ratio), this.step);
            number.textContent = isBand ? `${at(0)} … ${at(1)}` : at(component);
        }
    }

    draw() {
        const { stretch } = this.curves;
        const { context, width, height } = fitted(this.canvas);
        if (!(width > 0 && height > 0)) return;
        context.clearRect(0, 0, width, height);
        const y = (value) =>
            height - 3 - ((value - this.low) / (this.high - this.low)) * (height - 6);
        this.drawAxes(context, width, height, y);
        context.save();
        context.beginPath();
        context.rect(stretch.left - 1, 0, stretch.width + 2, height);
        context.clip();
        this.drawEvents(context, height);
        context.lineJoin = "round";
        context.lineCap = "butt";
        for (const line of this.lines) {
            this.pen(context, line);
            context.beginPath();
            if (line.isBand) bandPath(context, line.curve, stretch, y);
            else linePath(context, line.curve, line.component, stretch, y);
            context.stroke();
        }
        context.restore();
        context.setLineDash([]);
        this.drawKeys();
    }

    pen(context, line) {
        const { theme } = this.curves;
        context.strokeStyle = this.colour(line);
        context.lineWidth = (1.9 * theme.rem) / 16;
        const dash = this.components.length > 1 && !line.isBand ? DASHES[line.component] : [];
        context.setLineDash(dash.map((x) => (x * theme.rem) / 16));
    }

    drawAxes(context, width, height, y) {
        const { theme, stretch } = this.curves;
        const { rem } = theme;
        const lines = Math.max(1, Math.floor(height / (1.9 * rem)));
        let step = niceBelow((this.high - this.low) / lines);
        while ((this.high - this.low) / step > lines + 0.5)
            step *= step === niceBelow(step * 2) ? 2 : 2.5;
        context.font = `${0.68 * rem}px ${theme.family}`;
        context.textAlign = "right";
        context.textBaseline = "middle";
        context.lineWidth = 1;
        for (let n = Math.ceil(this.low / step); n * step <= this.high; n += 1) {
            const top = Math.round(y(n * step)) + 0.5;
            context.strokeStyle = n === 0 ? theme.dim : theme.line;
            context.beginPath();
            context.moveTo(stretch.left, top);
            context.lineTo(stretch.left + stretch.width, top);
            context.stroke();
            context.fillStyle = theme.dim;
            const middle = Math.min(height - 0.4 * rem, Math.max(0.4 * rem, top));
            context.fillText(written(n * step, step), stretch.left - 0.45 * rem, middle);
        }
    }

    drawEvents(context, height) {
        const { theme, stretch, trial } = this.curves;
        context.lineWidth = theme.rem / 16;
        context.setLineDash([2, 4]);
        context.globalAlpha = 0.75;
        const inView = trial.events.filter(
            ({ frame }) => stretch.start <= frame && frame <= stretch.end,
        );
        // More of them would hide the curves.
        const shown = inView.length * LEAST_ROOM < stretch.width ? inView : [];
        for (const { frame, side } of shown) {
            context.strokeStyle = theme.side(side);
            const x = Math.round(stretch.x(frame)) + 0.5;
            context.beginPath();
            context.moveTo(x, 0);
            context.lineTo(x, height);
            context.stroke();
        }
        context.globalAlpha = 1;
        context.setLineDash([]);
    }

    /** Beside each number a piece of its line. */
    drawKeys() {
        for (const { line, key } of this.values) {
            const { context, width, height } = fitted(key);
            context.clearRect(0, 0, width, height);
            this.pen(context, line);
            context.beginPath();
            context.moveTo(0, height / 2);
            context.lineTo(width, height / 2);
            context.stroke();
        }
    }
}

/** The samples in view, with one to either side. */
function samplesInView({ track, ratio }, stretch) {
    const first = Math.max(0, Math.floor(stretch.start * ratio) - 1);
    const last = Math.min(track.length - 1, Math.ceil(stretch.end * ratio) + 1);
    return [first, last];
}

/** A line that breaks where samples are missing. Of many samples a pixel shows least and most. */
function linePath(context, curve, component, stretch, y) {
    const { track, ratio } = curve;
    const [first, last] = samplesInView(curve, stretch);
    const perPixel = (last - first) / stretch.width;
    if (perPixel > 3) {
        const bunch = Math.ceil(perPixel);
        // From a fixed sample on, so that the picture does not flicker when it moves.
        for (let i = Math.floor(first / bunch) * bunch; i <= last; i += bunch) {
            const x = stretch.x(i / ratio);
            let [low, high] = [Infinity, -Infinity];
            for (let j = i; j < i + bunch && j <= last; j += 1) {
                const value = track.value(component, j);
                if (value < low) low = value;
                if (value > high) high = value;
            }
            if (!(low <= high)) continue;
            context.moveTo(x, y(high) - 0.5);
            context.lineTo(x, y(low) + 0.5);
        }
        return;
    }
    let isDown = false;
    for (let i = first; i <= last; i += 1) {
        const value = track.value(component, i);
        if (value !== value) {
            isDown = false;
            continue;
        }
        const [left, top] = [stretch.x(i / ratio), y(value)];
        if (isDown) context.lineTo(left, top);
        else {
            // A single sample between gaps is a dot.
            context.moveTo(left - 0.5, top);
            context.lineTo(left, top);
        }
        isDown = true;
    }
}

/** From the least to the most of each frame. */
function bandPath(context, curve, stretch, y) {
    const { track } = curve;
    const [first, last] = samplesInView(curve, stretch);
    const bunch = Math.max(1, Math.ceil((last - first) / stretch.width));
    for (let i = Math.floor(first / bunch) * bunch; i <= last; i += bunch) {
        let [low, high] = [Infinity, -Infinity];
        for (let j = i; j < i + bunch && j <= last; j += 1) {
            low = Math.min(low, track.value(0, j));
            high = Math.max(high, track.value(1, j));
        }
        if (!(low <= high)) continue;
        context.moveTo(stretch.x(i), y(high) - 0.5);
        context.lineTo(stretch.x(i), y(low) + 0.5);
    }
}
