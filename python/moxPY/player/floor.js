// What stands still: the grid of the floor, the plates, the axes of the laboratory.

import { niceBelow } from "./data.js";
import { dot, plus, trace } from "./camera.js";

const MOST_LINES = 60;

/** A grid on the floor that everything stands on, with lines at round numbers of the laboratory. */
export class Floor {
    constructor(lab) {
        this.lab = lab;
        const { ahead, aside, up } = lab;
        this.step = Math.max(
            niceBelow(lab.size / 3),
            niceBelow(Math.max(lab.extent(ahead), lab.extent(aside)) / MOST_LINES) * 2,
        );
        this.height = lab.floor;
        this.lines = [...this.across(ahead, aside), ...this.across(aside, ahead)];
        this.up = up;
    }

    across(along, beside) {
        const ends = (axis) => {
            const [low, high] = this.lab.range(axis);
            return [Math.floor(low / this.step - 1), Math.ceil(high / this.step + 1)];
        };
        const [first, last] = ends(beside).map((n) => n * this.step);
        const [from, to] = ends(along);
        const lines = [];
        for (let n = from; n <= to; n += 1) {
            const start = this.place(along, n * this.step);
            lines.push([plus(start, beside, first), plus(start, beside, last)]);
        }
        return lines;
    }

    place(axis, value) {
        return plus(
            axis.map((x) => x * value),
            this.lab.up,
            this.height,
        );
    }

    draw(context, projection, theme) {
        context.strokeStyle = theme.grid;
        context.lineWidth = theme.rem / 16;
        context.beginPath();
        for (const line of this.lines) trace(context, projection.outline(line, false), false);
        context.stroke();
    }

    /** Where a place's shadow falls. */
    under(place) {
        return plus(place, this.lab.up, this.height - dot(place, this.lab.up));
    }
}

export function drawPlates(context, projection, theme, plates, isLoaded) {
    context.lineWidth = (1.5 * theme.rem) / 16;
    context.textAlign = "center";
    context.textBaseline = "middle";
    context.font = `${0.75 * theme.rem}px ${theme.family}`;
    plates.forEach((plate, index) => {
        if (!plate.corners) return;
        const pixels = projection.outline(plate.corners, true);
        if (pixels.length < 3) return;
        context.beginPath();
        trace(context, pixels, true);
        context.globalAlpha = isLoaded(plate) ? 0.32 : 0.16;
        context.fillStyle = isLoaded(plate) ? theme.force : theme.plate;
        context.fill();
        context.globalAlpha = 1;
        context.strokeStyle = isLoaded(plate) ? theme.force : theme.plate;
        context.stroke();
        drawNumber(context, projection, theme, plate, index + 1);
    });
}

/** The number of a plate in the corner that is nearest. */
function drawNumber(context, projection, theme, plate, number) {
    const middle = plate.corners.reduce((sum, corner) => plus(sum, corner, 0.25), [0, 0, 0]);
    const inner = plate.corners.map((corner) => plus(plus([0, 0, 0], corner, 0.8), middle, 0.2));
    const pixels = inner.map((corner) => projection.pixel(corner)).filter(Boolean);
    if (!pixels.length) return;
    const nearest = pixels.reduce((a, b) => (a[2] < b[2] ? a : b));
    context.fillStyle = theme.dim;
    context.fillText(String(number), nearest[0], nearest[1]);
}

/** The axes of the laboratory in a corner of the picture, told apart by letters. */
export function drawCompass(context, camera, theme, left, top) {
    const { right, top: upward, front } = camera.axes();
    const length = 1.5 * theme.rem;
    const axes = [0, 1, 2].map((index) => {
        const axis = [0, 0, 0];
        axis[index] = 1;
        return { name: "XYZ"[index], axis, depth: dot(axis, front) };
    });
    context.lineCap = "round";
    context.textAlign = "center";
    context.textBaseline = "middle";
    context.font = `600 ${0.72 * theme.rem}px ${theme.family}`;
    for (const { name, axis, depth } of axes.sort((a, b) => b.depth - a.depth)) {
        const [dx, dy] = [dot(axis, right) * length, -dot(axis, upward) * length];
        context.strokeStyle = theme.dim;
        context.globalAlpha = depth > 0 ? 0.55 : 1;
        context.lineWidth = (2 * theme.rem) / 16;
        context.beginPath();
        context.moveTo(left, top);
        context.lineTo(left + dx, top + dy);
        context.stroke();
        if (Math.hypot(dx, dy) > 0.25 * length) {
            context.fillStyle = theme.text;
            context.fillText(name, left + dx * 1.38, top + dy * 1.38);
        }
    }
    context.globalAlpha = 1;
}
