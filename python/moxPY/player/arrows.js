// Forces as arrows at the point where they act, as long as they are strong.

import { niceBelow, written } from "./data.js";
import { plus } from "./camera.js";
import { drawText } from "./names.js";

const TALLEST = 0.75; // the longest arrow, as part of the height of what moves

export class Arrows {
    constructor(plates, size) {
        this.plates = plates;
        this.unit = plates.find((plate) => plate.unit)?.unit ?? "";
        let strongest = 0;
        const force = [0, 0, 0];
        for (const plate of plates) {
            for (let frame = 0; frame < plate.point.length; frame += 1) {
                if (!plate.point.isKnown(frame) || !plate.force.place(frame, force)) continue;
                strongest = Math.max(strongest, Math.hypot(...force));
            }
        }
        this.strongest = strongest;
        // A round length for a unit of force, so that it can be told.
        this.scale = strongest > 0 ? niceBelow((TALLEST * size) / strongest) : 0;
        this.factor = 1;
    }

    /** The length of an arrow for a unit of force, in the unit of places. */
    get length() {
        return this.scale * this.factor;
    }

    /** The arrows of a frame: where they begin and end, and how strong. */
    at(frame) {
        const found = [];
        for (const plate of this.plates) {
            const [point, force] = [
                [0, 0, 0],
                [0, 0, 0],
            ];
            if (!plate.point.place(frame, point) || !plate.force.place(frame, force)) continue;
            const end = plus(point, force, this.length);
            found.push({ plate, point, end, strength: Math.hypot(...force) });
        }
        return found;
    }

    isLoaded(plate, frame) {
        return frame < plate.point.length && plate.point.isKnown(frame);
    }

    /** Draw the arrows of a frame; gives where their strengths stand. */
    draw(context, projection, theme, frame) {
        const boxes = [];
        for (const { plate, point, end, strength } of this.at(frame)) {
            const pixels = projection.outline([point, end], false);
            if (pixels.length < 2) continue;
            drawArrow(context, theme, pixels[0], pixels[1]);
            const text = `${written(strength, 1)} ${plate.unit}`.trim();
            boxes.push(drawStrength(context, theme, pixels, text));
        }
        return boxes;
    }
}

function drawArrow(context, theme, [x, y], [endX, endY]) {
    const length = Math.hypot(endX - x, endY - y);
    if (length < 1) return;
    const [dx, dy] = [(endX - x) / length, (endY - y) / length];
    const head = Math.min(0.95 * theme.rem, 0.6 * length);
    const path = () => {
        context.beginPath();
        context.moveTo(x, y);
        context.lineTo(endX - dx * head * 0.7, endY - dy * head * 0.7);
    };
    const tip = () => {
        context.beginPath();
        context.moveTo(endX, endY);
        context.lineTo(endX - dx * head - dy * head * 0.38, endY - dy * head + dx * head * 0.38);
        context.lineTo(endX - dx * head + dy * head * 0.38, endY - dy * head - dx * head * 0.38);
        context.closePath();
    };
    context.lineCap = "butt";
    context.lineJoin = "miter";
    // A seam in the colour of the background keeps it apart from what is behind it.
    context.strokeStyle = theme.background;
    context.lineWidth = (6.5 * theme.rem) / 16;
    path();
    context.stroke();
    context.lineWidth = (3 * theme.rem) / 16;
    tip();
    context.stroke();
    context.strokeStyle = theme.force;
    context.fillStyle = theme.force;
    context.lineWidth = (3.5 * theme.rem) / 16;
    path();
    context.stroke();
    tip();
    context.fill();
    context.beginPath();
    context.arc(x, y, (3.6 * theme.rem) / 16, 0, 2 * Math.PI);
    context.fill();
}

function drawStrength(context, theme, [start, end], text) {
    const isUpward = end[1] <= start[1];
    context.font = `600 ${0.8 * theme.rem}px ${theme.family}`;
    context.textAlign = "center";
    context.textBaseline = isUpward ? "bottom" : "top";
    const top = end[1] + (isUpward ? -0.25 : 0.25) * theme.rem;
    drawText(context, theme, text, end[0], top, theme.force);
    const half = context.measureText(text).width / 2;
    const height = (isUpward ? -0.8 : 0.8) * theme.rem;
    return {
        left: end[0] - half,
        right: end[0] + half,
        top: Math.min(top, top + height),
        bottom: Math.max(top, top + height),
    };
}
