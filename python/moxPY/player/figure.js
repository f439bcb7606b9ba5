// What moves: markers, sticks, trails, segments. Gaps stay visible as such.

import { plus, trace } from "./camera.js";

const LONGEST_GHOST = 1; // seconds: in longer gaps nobody can say where a marker was
const TRAIL = 0.3; // seconds
const TRAIL_PARTS = 5; // each fainter than the one before

/** Where the markers are in a frame, measured or, within short gaps, between their neighbours. */
export class Figure {
    constructor(trial, clock) {
        this.trial = trial;
        this.clock = clock;
        this.longest = LONGEST_GHOST * clock.rate;
        this.points = trial.markers.map((marker, index) => ({
            marker,
            index,
            place: [0, 0, 0],
            state: "absent",
            pixel: null,
        }));
        this.a = [0, 0, 0];
        this.b = [0, 0, 0];
    }

    get seen() {
        return this.points.filter((point) => point.state === "seen").length;
    }

    move(frame) {
        for (const point of this.points) {
            if (point.marker.track.place(frame, point.place)) point.state = "seen";
            else point.state = this.guess(point, frame) ? "gap" : "absent";
        }
    }

    /** Between the frames before and behind a gap: to see that something is missing, and about where. */
    guess(point, frame) {
        const gap = point.marker.gaps.find(([first, last]) => first <= frame && frame <= last);
        if (!gap || gap[1] - gap[0] >= this.longest) return false;
        const { track } = point.marker;
        if (!track.place(gap[0] - 1, this.a) || !track.place(gap[1] + 1, this.b)) return false;
        const part = (frame - gap[0] + 1) / (gap[1] - gap[0] + 2);
        point.place = plus(this.a, plus(this.b, this.a, -1), part);
        return true;
    }

    project(projection) {
        for (const point of this.points) {
            point.pixel = point.state === "absent" ? null : projection.pixel(point.place);
        }
    }

    /** Sticks whose ends are known, with the side that both have. */
    sticks() {
        const found = [];
        for (const [one, other] of this.trial.sticks) {
            const [a, b] = [this.points[one], this.points[other]];
            if (!a.pixel || !b.pixel) continue;
            const side = a.marker.side === b.marker.side ? a.marker.side : "";
            const isSure = a.state === "seen" && b.state === "seen";
            found.push({ a, b, side, isSure, depth: (a.pixel[2] + b.pixel[2]) / 2 });
        }
        return found;
    }
}

export function drawShadows(context, projection, theme, floor, figure) {
    context.strokeStyle = theme.shadow;
    context.lineWidth = (3 * theme.rem) / 16;
    context.lineCap = "round";
    context.beginPath();
    for (const { a, b } of figure.sticks()) {
        trace(
            context,
            projection.outline([floor.under(a.place), floor.under(b.place)], false),
            false,
        );
    }
    context.stroke();
    context.fillStyle = theme.shadow;
    context.beginPath();
    for (const point of figure.points) {
        const pixel = point.state === "seen" && projection.pixel(floor.under(point.place));
        if (!pixel) continue;
        const radius = (2 * theme.rem) / 16;
        context.moveTo(pixel[0] + radius, pixel[1]);
        context.ellipse(pixel[0], pixel[1], radius, radius / 2, 0, 0, 2 * Math.PI);
    }
    context.fill();
}

/** Where markers came from, broken where they were not seen. */
export function drawTrails(context, projection, theme, figure, clock, isWanted) {
    const length = Math.max(TRAIL_PARTS, Math.round(TRAIL * clock.rate));
    // At most 60 pieces a marker, whatever the rate; they stay in place as time goes on.
    const step = Math.max(1, Math.ceil(length / 60));
    const place = [0, 0, 0];
    context.lineWidth = (1.6 * theme.rem) / 16;
    context.lineCap = "butt";
    for (const { marker } of figure.points.filter(isWanted)) {
        context.strokeStyle = theme.side(marker.side);
        for (let part = 0; part < TRAIL_PARTS; part += 1) {
            const end = clock.frame - Math.round((part * length) / TRAIL_PARTS);
            const begin = clock.frame - Math.round(((part + 1) * length) / TRAIL_PARTS);
            context.globalAlpha = 0.42 * (1 - part / TRAIL_PARTS);
            context.beginPath();
            let isDown = false;
            for (let frame = begin; ; frame = Math.min(end, nextOf(frame, step))) {
                const isSeen = marker.track.place(frame, place);
                const pixel = isSeen && projection.pixel(place);
                if (pixel && isDown) context.lineTo(pixel[0], pixel[1]);
                else if (pixel) context.moveTo(pixel[0], pixel[1]);
                isDown = Boolean(pixel);
                if (frame >= end) break;
            }
            context.stroke();
        }
    }
    context.globalAlpha = 1;
}

const nextOf = (frame, step) => (Math.floor(frame / step) + 1) * step;

/** Sticks and markers, what is far away first. */
export function drawFigure(context, theme, figure, scale, hasSticks, isSelected) {
    const sticks = hasSticks ? figure.sticks() : [];
    const points = figure.points.filter((point) => point.pixel);
    const items = [
        ...sticks.map((stick) => ({ depth: stick.depth, draw: () => drawStick(stick) })),
        ...points.map((point) => ({ depth: point.pixel[2], draw: () => drawPoint(point) })),
    ];
    const dotted = (dash) => context.setLineDash(dash.map((x) => (x * theme.rem) / 16));

    function drawStick({ a, b, side, isSure }) {
        context.strokeStyle = theme.side(side);
        context.lineWidth = Math.max(
            (1.5 * theme.rem) / 16,
            scale.stick / ((a.pixel[2] + b.pixel[2]) / 2),
        );
        context.lineCap = "round";
        context.globalAlpha = isSure ? 0.85 : 0.4;
        if (!isSure) dotted([2, 6]);
        context.beginPath();
        context.moveTo(a.pixel[0], a.pixel[1]);
        context.lineTo(b.pixel[0], b.pixel[1]);
        context.stroke();
        context.setLineDash([]);
        context.globalAlpha = 1;
    }

    function drawPoint(point) {
        const [left, top, depth] = point.pixel;
        const radius = Math.max((2.6 * theme.rem) / 16, scale.marker / depth);
        context.beginPath();
        context.arc(left, top, radius, 0, 2 * Math.PI);
        if (point.state === "seen") {
            context.fillStyle = theme.side(point.marker.side);
            context.fill();
            context.lineWidth = theme.rem / 16;
            context.strokeStyle = theme.background;
            context.stroke();
        } else {
            context.lineWidth = (1.4 * theme.rem) / 16;
            context.strokeStyle = theme.side(point.marker.side);
            dotted([2.2, 2.2]);
            context.stroke();
            context.setLineDash([]);
        }
        if (!isSelected(point)) return;
        context.beginPath();
        context.arc(left, top, radius + (3.5 * theme.rem) / 16, 0, 2 * Math.PI);
        context.lineWidth = (2 * theme.rem) / 16;
        context.strokeStyle = theme.text;
        context.stroke();
    }

    items.sort((a, b) => b.depth - a.depth);
    for (const item of items) item.draw();
}

/**
 * The axes of segments at their origins, told apart by letters and dashes as well as by colours. Their
 * names go to `names`, if there is one.
 */
export function drawSegments(context, projection, theme, segments, frame, length, names) {
    const [origin, axis] = [
        [0, 0, 0],
        [0, 0, 0],
    ];
    const colours = [theme["series-1"], theme["series-2"], theme["series-3"]];
    const dashes = [[], [4, 2], [1.5, 2.5]];
    context.lineCap = "butt";
    context.textAlign = "center";
    context.textBaseline = "middle";
    for (const segment of segments) {
        if (!segment.origin.place(frame, origin) || !segment.axes.isKnown(frame)) continue;
        for (let index = 0; index < 3; index += 1) {
            segment.axes.place(frame, axis, 3 * index);
            const end = plus(origin, axis, length);
            const pixels = projection.outline([origin, end], false);
            context.strokeStyle = colours[index];
            context.lineWidth = (2.4 * theme.rem) / 16;
            context.setLineDash(dashes[index].map((x) => (x * theme.rem) / 8));
            context.beginPath();
            trace(context, pixels, false);
            context.stroke();
            const tip = projection.pixel(plus(origin, axis, 1.16 * length));
            if (!tip || scaleOf(pixels) < 1.2 * theme.rem) continue;
            context.font = `600 ${0.62 * theme.rem}px ${theme.family}`;
            context.fillStyle = colours[index];
            context.fillText("xyz"[index], tip[0], tip[1]);
        }
        context.setLineDash([]);
        const pixel = projection.pixel(origin);
        if (!pixel) continue;
        context.fillStyle = theme.side(segment.side);
        context.beginPath();
        context.arc(pixel[0], pixel[1], (3 * theme.rem) / 16, 0, 2 * Math.PI);
        context.fill();
        names?.add(segment.label, pixel, (3 * theme.rem) / 16, false);
    }
}

const scaleOf = (pixels) =>
    pixels.length < 2 ? 0 : Math.hypot(pixels[0][0] - pixels[1][0], pixels[0][1] - pixels[1][1]);
