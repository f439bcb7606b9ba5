// The picture in space: what is drawn, in which order, from where.

import { written } from "./data.js";
import { fitted } from "./theme.js";
import { Camera, OPENING, Projection, plus } from "./camera.js";
import { Floor, drawCompass, drawPlates } from "./floor.js";
import { Names } from "./names.js";
import { Figure, drawFigure, drawSegments, drawShadows, drawTrails } from "./figure.js";
import { Arrows } from "./arrows.js";

// As parts of the size of what moves.
const MARKER = 0.0075;
const STICK = 0.0062;
const SEGMENT = 0.085;
const MARGIN = 1.27; // around what moves

export class Stage {
    constructor(canvas, trial, clock, lab, theme) {
        Object.assign(this, { canvas, trial, clock, lab, theme });
        this.shown = {
            names: false,
            sticks: true,
            trails: trial.frames > 1,
            gaps: true,
            plates: true,
            forces: true,
            segments: true,
            grid: true,
        };
        this.selected = new Set();
        this.hovered = -1;
        this.figure = new Figure(trial, clock);
        this.floor = new Floor(lab);
        this.arrows = new Arrows(trial.plates, lab.height || lab.size);
        this.camera = new Camera(lab.up, lab.ahead);
        this.isFollowing = true;
        this.offset = [0, 0, 0];
        this.listeners = [];
        this.frameEverything();
        this.isAwaited = false;
    }

    /** Look at what moves, or, where the camera does not follow, at everything. */
    frameEverything() {
        this.offset = [0, 0, 0];
        this.camera.fit(MARGIN * (this.isFollowing ? this.lab.radius : this.lab.reach));
    }

    follow(isFollowing) {
        this.isFollowing = isFollowing;
        this.frameEverything();
        this.refresh();
    }

    /** One of the camera's views. */
    view(name) {
        this.camera.view(name);
        this.frameEverything();
        this.refresh();
    }

    pan(dx, dy) {
        const { width, height } = this.size;
        this.aim();
        const before = this.camera.target;
        this.camera.pan(dx, dy, width, height);
        this.offset = plus(this.offset, plus(this.camera.target, before, -1));
    }

    aim() {
        const middle = this.isFollowing ? this.lab.middle(this.clock.frame) : this.lab.centre();
        this.camera.target = plus(middle, this.offset);
    }

    get size() {
        return this.canvas.getBoundingClientRect();
    }

    /** The matrix that takes places to pixels of the canvas; see `Camera.matrix`. */
    matrix() {
        this.aim();
        const { width, height } = this.size;
        return this.camera.matrix(width, height);
    }

    /** The camera, as whoever computes a pixel needs it. */
    viewpoint() {
        this.aim();
        const { up, target } = this.camera;
        return { eye: this.camera.axes().eye, target, up, opening: OPENING };
    }

    /** Draw soon: once, however often it is asked for. */
    refresh() {
        if (this.isAwaited) return;
        this.isAwaited = true;
        requestAnimationFrame(() => {
            this.isAwaited = false;
            this.draw();
        });
    }

    draw() {
        const { context, width, height } = fitted(this.canvas);
        if (!(width > 0 && height > 0)) return;
        const { theme, figure, shown, lab } = this;
        const { frame } = this.clock;
        const projection = new Projection(this.matrix(), this.camera.radius * 0.02);
        figure.move(frame);
        if (!shown.gaps) hideGuesses(figure);
        figure.project(projection);
        context.clearRect(0, 0, width, height);
        if (shown.grid) this.floor.draw(context, projection, theme);
        if (shown.plates) {
            const isLoaded = (plate) => this.arrows.isLoaded(plate, frame);
            drawPlates(context, projection, theme, this.trial.plates, isLoaded);
        }
        if (shown.grid) drawShadows(context, projection, theme, this.floor, figure);
        if (shown.trails) {
            const isWanted = (point) => !this.selected.size || this.selected.has(point.index);
            drawTrails(context, projection, theme, figure, this.clock, isWanted);
        }
        const pixels = Camera.scale(width, height) * lab.size;
        const scale = { marker: MARKER * pixels, stick: STICK * pixels };
        drawFigure(context, theme, figure, scale, shown.sticks, (point) => this.isMarked(point));
        const names = new Names(context, theme);
        if (shown.segments) {
            const length = SEGMENT * lab.size;
            const wanted = shown.names ? names : null;
            drawSegments(context, projection, theme, this.trial.segments, frame, length, wanted);
        }
        if (shown.forces) names.keep(this.arrows.draw(context, projection, theme, frame));
        this.nameMarkers(names);
        names.draw();
        drawCompass(context, this.camera, theme, width - 3.2 * theme.rem, height - 3.4 * theme.rem);
        for (const listener of this.listeners) listener();
    }

    isMarked(point) {
        return this.selected.has(point.index) || point.index === this.hovered;
    }

    /** Those that are meant have their names, all of them where all are wanted. */
    nameMarkers(names) {
        const { rem } = this.theme;
        for (const point of this.figure.points) {
            const isMarked = this.isMarked(point);
            if (!this.shown.names && !isMarked) continue;
            const text = point.marker.label + (point.state === "gap" ? " (not seen)" : "");
            names.add(text, point.pixel, (6 * rem) / 16, isMarked);
        }
    }

    /** The marker at a pixel, -1 for none. */
    markerAt(left, top, within) {
        let [found, least] = [-1, within];
        for (const { pixel, index } of this.figure.points) {
            if (!pixel) continue;
            const distance = Math.hypot(pixel[0] - left, pixel[1] - top);
            if (distance < least) [found, least] = [index, distance];
        }
        return found;
    }

    /** Select a marker alone, or beside others; without one, none. */
    select(index, isMore = false) {
        const was = this.selected.has(index);
        const others = this.selected.size > (was ? 1 : 0);
        if (!isMore) this.selected.clear();
        if (index >= 0 && !(was && (isMore || !others))) this.selected.add(index);
        else this.selected.delete(index);
        for (const listener of this.selecting ?? []) listener();
        this.refresh();
    }

    /** What the picture shows, in words. */
    words() {
        const { markers, segments } = this.trial;
        const lines = [];
        if (markers.length) lines.push(partOf(this.figure.seen, markers, "markers seen"));
        if (segments.length) {
            const known = segments.filter(({ origin }) => origin.isKnown(this.clock.frame)).length;
            lines.push(partOf(known, segments, "segments known"));
        }
        for (const index of [...this.selected].slice(0, 4)) lines.push(this.marker(index));
        return lines;
    }

    marker(index) {
        const { place, state, marker } = this.figure.points[index];
        if (state !== "seen") return `${marker.label}  not seen`;
        const numbers = place.map((x) => written(x, this.digits)).join("  ");
        return `${marker.label}  ${numbers} ${this.trial.unit}`.trim();
    }

    /** A tenth of a millimetre, or what is like it of another unit. */
    get digits() {
        return 10 ** Math.floor(Math.log10(Math.max(this.lab.size, 1e-9)) - 4 + 1e-9);
    }

    /** Scales: what the grid and the arrows mean. */
    scales() {
        const { unit } = this.trial;
        const found = [];
        if (this.shown.grid)
            found.push(`grid ${Number(this.floor.step.toPrecision(3))} ${unit}`.trim());
        if (this.shown.forces && this.arrows.length) {
            const [force, length] = roundPair(this.arrows.length);
            found.push(`force ${force} ${this.arrows.unit} = ${length} ${unit}`.trim());
        }
        return found;
    }
}

const partOf = (count, all, what) =>
    count === all.length ? `${count} ${what}` : `${count} of ${all.length} ${what}`;

/** A force and the length of its arrow, both in few digits: 1000 N = 1000 mm. */
function roundPair(length) {
    for (const force of [1000, 500, 100]) {
        const shown = force * length;
        if (shown >= 1) return [force, Number(shown.toPrecision(4))];
    }
    return [1000, Number((1000 * length).toPrecision(3))];
}

function hideGuesses(figure) {
    for (const point of figure.points) if (point.state === "gap") point.state = "absent";
}
