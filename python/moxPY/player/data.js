// The samples, as the page reads them: base64 of little-endian numbers, one component behind the other.

const MISSING = -32768;

/** The bytes of a base64 text. */
function bytesOf(text) {
    if (Uint8Array.fromBase64) return Uint8Array.fromBase64(text);
    const letters = atob(text);
    const bytes = new Uint8Array(letters.length);
    for (let i = 0; i < letters.length; i += 1) bytes[i] = letters.charCodeAt(i);
    return bytes;
}

/** The samples of a channel. They are taken from their text when they are first asked for. */
export class Track {
    constructor(packed, components) {
        this.packed = packed;
        this.components = components;
        this.precision = packed.precision;
        this.numbers = null;
    }

    load() {
        const { buffer } = bytesOf(this.packed.samples);
        this.packed.samples = "";
        const isWhole = this.packed.form === "int16";
        this.numbers = isWhole ? new Int16Array(buffer) : new Float32Array(buffer);
        const same = (value) => Array.from({ length: this.components }, () => value);
        this.offset = isWhole ? this.packed.offset : same(0);
        this.step = isWhole ? this.packed.step : same(1);
        this.isWhole = isWhole;
        return this.numbers;
    }

    /** Samples of each component. */
    get length() {
        return (this.numbers ?? this.load()).length / this.components;
    }

    /** One number; NaN where a sample is missing. */
    value(component, index) {
        const numbers = this.numbers ?? this.load();
        const number = numbers[component * (numbers.length / this.components) + index];
        if (this.isWhole && number === MISSING) return NaN;
        return this.offset[component] + this.step[component] * number;
    }

    isKnown(index) {
        const number = (this.numbers ?? this.load())[index];
        return this.isWhole ? number !== MISSING : number === number;
    }

    /** Three numbers into `out`; whether there is such a sample. */
    place(index, out, first = 0) {
        if (!(index >= 0 && index < this.length) || !this.isKnown(index)) return false;
        out[0] = this.value(first, index);
        out[1] = this.value(first + 1, index);
        out[2] = this.value(first + 2, index);
        return true;
    }

    /** The runs of missing samples: pairs of first and last. */
    gaps() {
        const runs = [];
        const count = this.length;
        for (let i = 0; i < count; i += 1) {
            if (this.isKnown(i)) continue;
            const first = i;
            while (i + 1 < count && !this.isKnown(i + 1)) i += 1;
            runs.push([first, i]);
        }
        return runs;
    }

    /** The least and the largest number of the components; null of none. */
    range(components) {
        let low = Infinity;
        let high = -Infinity;
        for (const component of components) {
            for (let i = 0, n = this.length; i < n; i += 1) {
                const value = this.value(component, i);
                if (value < low) low = value;
                if (value > high) high = value;
            }
        }
        return low <= high ? [low, high] : null;
    }
}

/** The trial of the page, its tracks ready to be asked. */
export function readTrial() {
    const element = document.getElementById("trial");
    const trial = JSON.parse(element.textContent);
    element.remove();
    for (const marker of trial.markers) {
        marker.track = new Track(marker.track, 3);
        marker.gaps = marker.track.gaps();
        marker.missing = marker.gaps.reduce((sum, [first, last]) => sum + last - first + 1, 0);
    }
    for (const segment of trial.segments) {
        segment.axes = new Track(segment.axes, 9);
        segment.origin = new Track(segment.origin, 3);
    }
    for (const plate of trial.plates) {
        plate.force = new Track(plate.force, 3);
        plate.point = new Track(plate.point, 3);
    }
    for (const curve of trial.curves) curve.track = new Track(curve.track, curve.components.length);
    return trial;
}

/** 1, 2 or 5 times a power of ten: the largest that is not over a number. */
export function niceBelow(number) {
    if (!(number > 0) || !Number.isFinite(number)) return 1;
    const power = 10 ** Math.floor(Math.log10(number) + 1e-9);
    const digit = number / power;
    return power * (digit >= 5 ? 5 : digit >= 2 ? 2 : 1);
}

/** A number as people write it, to a step. */
export function written(value, step) {
    if (!Number.isFinite(value)) return "–";
    const digits = Math.min(6, Math.max(0, -Math.floor(Math.log10(step) + 1e-9)));
    const text = value.toFixed(digits);
    return (Number(text) === 0 ? text.replace("-", "") : text).replace("-", "−");
}
