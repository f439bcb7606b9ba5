// Play, speed, single frames; below them events and gaps over time.

import { fitted } from "./theme.js";
import { listenForTime } from "./stretch.js";

const LANES = [
    ["left", "L", "Left"],
    ["right", "R", "Right"],
    ["", "", "Neither side"],
];
const MOST_BUTTONS = 150; // events in view
const NEAR_LINE = 6; // pixels

// Heights as the style sheet has them, in rem.
const AXIS = 1.35;
const LANE = 1.55;
const LANE_LINE = 1.1;

/** What an event looks like: a foot that comes down, one that leaves, anything else. */
function shapeOf(label) {
    if (/strike|contact|touch|^[LR]?(HS|FS|IC|FC)$/i.test(label)) return "down";
    if (/off|^[LR]?(TO|FO)$/i.test(label)) return "up";
    return "other";
}

const SHAPES = {
    down: "M1 2.5 H11 L6 11 Z",
    up: "M1.6 9.7 H10.4 L6 2.2 Z",
    other: "M6 1 L11 6 L6 11 L1 6 Z",
};

export class Timeline {
    constructor(elements, trial, clock, stretch, stage, theme) {
        Object.assign(this, { elements, trial, clock, stretch, stage, theme });
        this.lanes = LANES.filter(([side]) => trial.events.some((event) => event.side === side));
        this.missing = missingByFrame(trial);
        this.hasGaps = this.missing.some((count) => count > 0);
        elements.line.style.setProperty("--lanes", this.lanes.length);
        this.makeTransport();
        listenForTime(elements.line, stretch, clock, true);
        elements.line.addEventListener("click", (event) => this.goToNearest(event));
        this.laneNames();
    }

    makeTransport() {
        const { clock, elements } = this;
        elements.play.addEventListener("click", () => clock.toggle());
        elements.back.addEventListener("click", () => this.step(-1));
        elements.on.addEventListener("click", () => this.step(1));
        elements.backEvent.addEventListener("click", () => this.stepEvent(-1));
        elements.onEvent.addEventListener("click", () => this.stepEvent(1));
        elements.speed.addEventListener("change", () =>
            clock.setSpeed(Number(elements.speed.value)),
        );
        elements.loop.addEventListener("click", () => {
            clock.isLooping = !clock.isLooping;
            elements.loop.setAttribute("aria-pressed", String(clock.isLooping));
        });
        elements.frame.min = clock.firstFrame;
        elements.frame.max = clock.firstFrame + clock.last;
        elements.frame.addEventListener("change", () => {
            clock.go(Number(elements.frame.value) - clock.firstFrame);
            elements.frame.value = clock.frame + clock.firstFrame;
        });
        elements.ofFrames.textContent = `of ${clock.firstFrame + clock.last}`;
        for (const button of [elements.backEvent, elements.onEvent]) {
            button.hidden = !this.trial.events.length;
        }
    }

    step(frames) {
        this.clock.pause();
        this.clock.go(this.clock.frame + frames);
    }

    /** To the next event, or the one before. */
    stepEvent(direction) {
        const { frame } = this.clock;
        const frames = this.trial.events.map((event) => event.frame).sort((a, b) => a - b);
        const next =
            direction > 0
                ? frames.find((each) => each > frame)
                : frames.findLast((each) => each < frame);
        if (next === undefined) return;
        this.clock.pause();
        this.clock.go(next);
    }

    /** What changes with each frame. */
    tick() {
        const { clock, elements } = this;
        elements.play.setAttribute("aria-label", clock.isPlaying ? "Pause" : "Play");
        elements.play.setAttribute("aria-pressed", String(clock.isPlaying));
        if (document.activeElement !== elements.frame || clock.isPlaying) {
            elements.frame.value = clock.frame + clock.firstFrame;
        }
        const digits = clock.rate >= 100 ? 3 : 2;
        elements.seconds.textContent = `${clock.time(clock.frame).toFixed(digits)} s`;
        this.stretch.keep(clock.frame);
        const x = this.stretch.x(clock.frame);
        elements.cursor.style.transform = `translateX(${x}px)`;
        elements.line.setAttribute("aria-valuenow", clock.frame + clock.firstFrame);
    }

    /** What changes with the stretch in view, the size, the colours, the selection. */
    draw() {
        const { context, width, height } = fitted(this.elements.lineCanvas);
        const { theme, stretch } = this;
        context.clearRect(0, 0, width, height);
        const rem = theme.rem;
        const axis = AXIS * rem;
        context.font = `${0.72 * rem}px ${theme.family}`;
        context.textBaseline = "middle";
        context.textAlign = "center";
        context.lineWidth = 1;
        for (const { x, text } of stretch.ticks(4.2 * rem)) {
            context.strokeStyle = theme.line;
            context.beginPath();
            context.moveTo(Math.round(x) + 0.5, axis - 0.25 * rem);
            context.lineTo(Math.round(x) + 0.5, height);
            context.stroke();
            context.fillStyle = theme.dim;
            const half = context.measureText(text).width / 2;
            context.fillText(text, Math.min(Math.max(x, half), width - half), axis / 2);
        }
        context.textAlign = "right";
        context.fillText("s", stretch.left - 1.5 * rem, axis / 2);
        if (this.hasGaps) this.drawGaps(context, height - 0.95 * rem, 0.7 * rem);
        this.placeEvents(context);
        this.elements.whole.hidden = stretch.isWhole;
    }

    /** How many markers were not seen; of selected ones, when. */
    drawGaps(context, top, height) {
        const { theme, stretch, stage, trial } = this;
        context.fillStyle = theme.dim;
        context.font = `${0.68 * theme.rem}px ${theme.family}`;
        context.fillText("gaps", stretch.left - 0.6 * theme.rem, top + height / 2);
        context.fillStyle = theme.line;
        context.fillRect(stretch.left, top + height, stretch.width, 1);
        const chosen = [...stage.selected];
        const counts = chosen.length
            ? missingByFrame({ frames: trial.frames, markers: chosen.map((i) => trial.markers[i]) })
            : this.missing;
        const most =
            chosen.length || Math.max(...columnsOf(this.missing, 0, trial.frames, 1000), 1);
        const columns = Math.max(1, Math.round(stretch.width));
        const found = columnsOf(counts, stretch.start, stretch.end, columns);
        context.fillStyle = chosen.length ? theme.text : theme.dim;
        for (let column = 0; column < columns;) {
            const count = found[column];
            const first = column;
            while (column < columns && found[column] === count) column += 1;
            if (!count) continue;
            // Few missing markers show, too.
            const size = Math.max(2, height * Math.sqrt(Math.min(1, count / most)));
            const wide = Math.max(1, column - first);
            context.fillRect(stretch.left + first, top + height - size, wide, size);
        }
    }

    laneNames() {
        for (const [side, letter, name] of this.lanes) {
            const label = document.createElement("span");
            label.className = "lane";
            label.dataset.side = side;
            label.title = name;
            label.textContent = letter || "·";
            label.style.setProperty(
                "--lane",
                this.lanes.findIndex((lane) => lane[0] === side),
            );
            this.elements.line.append(label);
        }
    }

    /** Buttons; where there are too many for them, lines, of which a click finds the nearest. */
    placeEvents(context) {
        const { stretch, trial, elements, theme } = this;
        const inView = trial.events.filter(
            ({ frame }) => stretch.start - 0.5 <= frame && frame <= stretch.end + 0.5,
        );
        this.crowd = inView.length > MOST_BUTTONS ? inView : [];
        const shown = this.crowd.length ? [] : inView;
        elements.events.replaceChildren(...shown.map((event) => this.button(event, inView)));
        for (const event of this.crowd) {
            const top = this.laneTop(event);
            context.fillStyle = theme.side(event.side);
            context.fillRect(stretch.x(event.frame) - 0.5, top, 1, LANE_LINE * theme.rem);
        }
    }

    laneTop(event) {
        const lane = this.lanes.findIndex(([side]) => side === event.side);
        return (AXIS + lane * LANE + (LANE - LANE_LINE) / 2) * this.theme.rem;
    }

    /** Go to the event of a crowd that is under the pointer. */
    goToNearest(pointer) {
        if (!this.crowd.length) return;
        const { left, top } = this.elements.line.getBoundingClientRect();
        const [x, y] = [pointer.clientX - left, pointer.clientY - top];
        const distance = (event) => Math.abs(this.stretch.x(event.frame) - x);
        const isNear = (event) =>
            distance(event) < NEAR_LINE &&
            Math.abs(this.laneTop(event) + (LANE_LINE / 2) * this.theme.rem - y) <
                (LANE / 2) * this.theme.rem;
        const near = this.crowd.filter(isNear).sort((a, b) => distance(a) - distance(b));
        if (near.length) this.clock.go(near[0].frame);
    }

    button(event, inView) {
        const { stretch, clock, theme } = this;
        const button = document.createElement("button");
        button.type = "button";
        button.className = "event";
        button.dataset.side = event.side;
        button.dataset.frame = event.frame + clock.firstFrame;
        button.dataset.shape = shapeOf(event.label || event.context);
        button.style.setProperty("--x", `${stretch.x(event.frame)}px`);
        button.style.setProperty(
            "--lane",
            this.lanes.findIndex(([side]) => side === event.side),
        );
        const name = [event.context, event.label].filter(Boolean).join(" ");
        button.title = `${name}, ${event.time.toFixed(3)} s, frame ${event.frame + clock.firstFrame}`;
        button.setAttribute("aria-label", button.title);
        button.innerHTML = `<svg viewBox="0 0 12 12" aria-hidden="true"><path d="${SHAPES[button.dataset.shape]}"/></svg>`;
        const next = inView.find(
            (other, index) => index > inView.indexOf(event) && other.side === event.side,
        );
        const room =
            (next ? stretch.x(next.frame) : stretch.left + stretch.width) - stretch.x(event.frame);
        const text = event.label || event.context;
        if (room > (0.58 * text.length + 2.2) * 0.72 * theme.rem) {
            const label = document.createElement("span");
            label.textContent = text;
            button.append(label);
        }
        button.addEventListener("click", () => {
            clock.pause();
            clock.go(event.frame);
        });
        return button;
    }
}

/** How many markers were not seen in each frame. */
function missingByFrame({ frames, markers }) {
    const counts = new Uint16Array(frames);
    for (const { gaps } of markers) {
        for (const [first, last] of gaps) for (let i = first; i <= last; i += 1) counts[i] += 1;
    }
    return counts;
}

/** The most in each of so many columns of a stretch of frames. */
function columnsOf(counts, start, end, columns) {
    const found = new Uint16Array(columns);
    const span = end - start || 1;
    for (let column = 0; column < columns; column += 1) {
        // A frame lasts from half a frame before it to half a frame behind.
        const first = Math.round(start + (column * span) / columns);
        const last = Math.max(first, Math.round(start + ((column + 1) * span) / columns) - 1);
        for (let i = first; i <= last && i < counts.length; i += 1) {
            if (counts[i] > found[column]) found[column] = counts[i];
        }
    }
    return found;
}
