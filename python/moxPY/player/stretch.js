// The stretch of time that is in view: one for the time line and all curves.

import { wheelSteps } from "./pointer.js";

const SHORTEST = 10; // frames

export class Stretch {
    constructor(clock) {
        this.clock = clock;
        this.left = 0; // of the first frame in view, in pixels
        this.width = 1; // between the first and the last
        this.listeners = [];
        this.whole();
    }

    get longest() {
        return Math.max(1, this.clock.last);
    }

    get isWhole() {
        return this.end - this.start >= this.longest;
    }

    whole() {
        this.start = 0;
        this.end = this.longest;
        this.tell();
    }

    tell() {
        for (const listener of this.listeners) listener();
    }

    /** The pixel of a frame, and the frame of a pixel. */
    x(frame) {
        return this.left + ((frame - this.start) / (this.end - this.start)) * this.width;
    }

    frame(x) {
        return this.start + ((x - this.left) / this.width) * (this.end - this.start);
    }

    zoom(factor, about = this.clock.frame) {
        const length = Math.min(
            this.longest,
            Math.max(Math.min(SHORTEST, this.longest), (this.end - this.start) * factor),
        );
        const part = (about - this.start) / (this.end - this.start);
        this.show(about - part * length, length);
    }

    pan(frames) {
        this.show(this.start + frames, this.end - this.start);
    }

    show(start, length) {
        this.start = Math.min(Math.max(0, start), this.longest - length);
        this.end = this.start + length;
        this.tell();
    }

    /** Turn the page when the frame that is shown left the view. */
    keep(frame) {
        const length = this.end - this.start;
        if (frame < this.start || frame > this.end) this.show(frame - 0.1 * length, length);
    }

    /** Seconds between marks so that each has room for so many pixels; and in which unit. */
    ticks(room) {
        const seconds = ((this.end - this.start) / this.clock.rate) * (room / this.width);
        const steps = [1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 1200, 1800, 3600, 7200];
        const fine = [0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5, ...steps];
        const step = fine.find((each) => each >= seconds) ?? 14400;
        const first = Math.ceil(this.clock.time(this.start) / step - 1e-9);
        const last = Math.floor(this.clock.time(this.end) / step + 1e-9);
        const found = [];
        for (let n = first; n <= last; n += 1) {
            const frame = n * step * this.clock.rate - (this.clock.firstFrame - 1);
            found.push({ x: this.x(frame), text: clockText(n * step, step) });
        }
        return found;
    }
}

/** "1.5", or "12:30" of long trials. */
function clockText(seconds, step) {
    if (step < 1) return seconds.toFixed(step < 0.01 ? 3 : step < 0.1 ? 2 : 1).replace("-", "−");
    const whole = Math.round(seconds);
    if (Math.abs(whole) < 60 && step < 60) return String(whole).replace("-", "−");
    const rest = String(Math.abs(whole) % 60).padStart(2, "0");
    return `${whole < 0 ? "−" : ""}${Math.floor(Math.abs(whole) / 60)}:${rest}`;
}

/** Drag to move through time, turn the wheel or use two fingers to come nearer. */
export function listenForTime(element, stretch, clock, isWheelFree) {
    const held = new Map();
    const at = (event) => event.clientX - element.getBoundingClientRect().left;
    element.addEventListener("pointerdown", (event) => {
        if (event.button !== 0 || event.target.closest("button, select")) return;
        element.setPointerCapture(event.pointerId);
        held.set(event.pointerId, at(event));
        if (held.size === 1) clock.go(stretch.frame(at(event)));
    });
    element.addEventListener("pointermove", (event) => {
        const before = held.get(event.pointerId);
        if (before === undefined) return;
        held.set(event.pointerId, at(event));
        const other = [...held].find(([id]) => id !== event.pointerId);
        if (!other) {
            clock.go(stretch.frame(at(event)));
            return;
        }
        const [was, is] = [Math.abs(before - other[1]), Math.abs(at(event) - other[1])];
        if (was > 8 && is > 8) stretch.zoom(was / is, stretch.frame((before + other[1]) / 2));
        stretch.pan(-((at(event) - before) / 2 / stretch.width) * (stretch.end - stretch.start));
    });
    for (const type of ["pointerup", "pointercancel"]) {
        element.addEventListener(type, (event) => held.delete(event.pointerId));
    }
    element.addEventListener(
        "wheel",
        (event) => {
            const isMeant = isWheelFree || event.ctrlKey || event.metaKey || event.altKey;
            if (Math.abs(event.deltaX) > Math.abs(event.deltaY)) {
                stretch.pan((event.deltaX / stretch.width) * (stretch.end - stretch.start));
            } else if (isMeant) {
                stretch.zoom(Math.exp(wheelSteps(event) * 0.2), stretch.frame(at(event)));
            } else return;
            event.preventDefault();
        },
        { passive: false },
    );
    element.addEventListener("dblclick", () => stretch.whole());
}
