// Where everything is: which way people go, how large they are, where the floor lies.

import { cross, dot, plus } from "./camera.js";

const LOOKS = 400; // frames that are looked at for sizes
const PATH = 2000; // frames that the path is known at, between which it is straight
const SMOOTH = 0.4; // seconds to either side over which the path is even

const STANDING = 0.02; // of the longest way: who goes less far stands still

const percentile = (sorted, part) => sorted[Math.round(part * (sorted.length - 1))] ?? 0;
const ordered = (numbers) => Float64Array.from(numbers).sort();

/** Those that move; all of them where none does. Axes of the laboratory are markers in some files. */
function moving(tracks) {
    const ways = tracks.map((track) => {
        const spans = [0, 1, 2].map((component) => track.range([component]) ?? [0, 0]);
        return Math.hypot(...spans.map(([low, high]) => high - low));
    });
    const least = STANDING * Math.max(0, ...ways);
    const movers = tracks.filter((_, index) => ways[index] > least);
    return movers.length ? movers : tracks;
}

export class Lab {
    constructor(trial, clock) {
        this.trial = trial;
        this.clock = clock;
        this.up = trial.up;
        this.tracks = moving([
            ...trial.markers.map((marker) => marker.track),
            ...trial.segments.map((segment) => segment.origin),
        ]);
        const looks = this.looks(Math.min(LOOKS, trial.frames));
        this.places = looks.flatMap(({ places }) => places);
        this.corners = trial.plates.flatMap((plate) => plate.corners ?? []);
        this.ahead = this.direction(looks);
        this.aside = cross(this.up, this.ahead);
        this.measure(looks);
        this.findFloor();
        this.makePath();
    }

    /** What is seen in so many frames, evenly. */
    looks(count) {
        const found = [];
        const place = [0, 0, 0];
        for (let n = 0; n < count; n += 1) {
            const frame = Math.round((n * (this.trial.frames - 1)) / Math.max(1, count - 1));
            const places = [];
            let sum = [0, 0, 0];
            for (const track of this.tracks) {
                if (!track.place(frame, place)) continue;
                places.push([...place]);
                sum = plus(sum, place);
            }
            if (places.length)
                found.push({ frame, places, middle: sum.map((x) => x / places.length) });
        }
        return found;
    }

    /** The axis of the laboratory, there or back, along which the path leads farthest. */
    direction(looks) {
        const level = [0, 1, 2].filter((index) => this.up[index] === 0);
        const travel = looks.length ? plus(looks.at(-1).middle, looks[0].middle, -1) : [0, 0, 0];
        const [one, other] = level;
        const index = Math.abs(travel[other]) > Math.abs(travel[one]) ? other : one;
        const ahead = [0, 0, 0];
        ahead[index] = travel[index] < 0 ? -1 : 1;
        return ahead;
    }

    /** How large what moves is: its height, and the ball around it. */
    measure(looks) {
        const heights = [];
        const lows = [];
        const reaches = [];
        for (const { places, middle } of looks) {
            const levels = places.map((place) => dot(place, this.up));
            lows.push(Math.min(...levels));
            heights.push(Math.max(...levels) - lows.at(-1));
            for (const place of places) {
                const away = plus(place, middle, -1);
                reaches.push(Math.hypot(dot(away, this.ahead), dot(away, this.aside)));
            }
        }
        this.height = percentile(ordered(heights), 0.9);
        this.level = percentile(ordered(lows), 0.5) + this.height / 2;
        this.radius = Math.max(this.height / 2, percentile(ordered(reaches), 0.98));
        if (!(this.radius > 0)) this.radius = Math.max(1, this.spread(this.corners));
        this.size = Math.max(this.height, this.radius);
    }

    spread(places) {
        return Math.max(0, ...places.map((place) => Math.hypot(...plus(place, places[0], -1)) / 2));
    }

    /** The least and the largest coordinate along an axis, but for a few places far out. */
    range(axis) {
        const levels = ordered(this.places.map((place) => dot(place, axis)));
        const corners = this.corners.map((corner) => dot(corner, axis));
        const known = levels.length ? [percentile(levels, 0.002), percentile(levels, 0.998)] : [];
        const all = [...known, ...corners];
        return all.length ? [Math.min(...all), Math.max(...all)] : [-this.radius, this.radius];
    }

    extent(axis) {
        const [low, high] = this.range(axis);
        return high - low;
    }

    /** Where the plates are; else at 0, unless everything hangs far above or lies below. */
    findFloor() {
        if (this.corners.length) {
            const levels = ordered(this.corners.map((corner) => dot(corner, this.up)));
            this.floor = percentile(levels, 0.5);
            return;
        }
        const [low] = this.range(this.up);
        this.floor = low < -0.15 * this.size || low > this.size ? low : 0;
    }

    /** The middle of what moves, smoothly. */
    makePath() {
        const looks = this.looks(Math.min(PATH, this.trial.frames));
        const spacing =
            looks.length > 1 ? (looks.at(-1).frame - looks[0].frame) / (looks.length - 1) : 1;
        const reach = Math.ceil((SMOOTH * this.clock.rate) / Math.max(1, spacing));
        const middles = looks.map(({ middle }) => middle);
        this.path = looks.map(({ frame }, index) => {
            const near = middles.slice(Math.max(0, index - reach), index + reach + 1);
            const sum = near.reduce((total, middle) => plus(total, middle), [0, 0, 0]);
            return { frame, middle: sum.map((x) => x / near.length) };
        });
    }

    /** What the camera looks at in a frame, always at one height. */
    middle(frame) {
        const { path } = this;
        if (!path.length) return this.centre();
        let [low, high] = [0, path.length - 1];
        while (high - low > 1) {
            const half = (low + high) >> 1;
            if (path[half].frame <= frame) low = half;
            else high = half;
        }
        const [a, b] = [path[low], path[high]];
        const span = b.frame - a.frame;
        const part = span > 0 ? Math.min(1, Math.max(0, (frame - a.frame) / span)) : 0;
        const place = plus(a.middle, plus(b.middle, a.middle, -1), part);
        return plus(place, this.up, this.level - dot(place, this.up));
    }

    /** The middle of everything, plates included. */
    centre() {
        return [this.ahead, this.aside, this.up].reduce(
            (sum, axis) => {
                const [low, high] = this.range(axis);
                return plus(sum, axis, (low + high) / 2);
            },
            [0, 0, 0],
        );
    }

    /** The ball around everything. */
    get reach() {
        return (
            Math.hypot(...[this.ahead, this.aside, this.up].map((axis) => this.extent(axis))) / 2
        );
    }
}
