// Names beside places: those that are meant, and of all others those that have room.

/** The names of a picture: first all are told, then drawn. */
export class Names {
    constructor(context, theme) {
        Object.assign(this, { context, theme });
        this.wanted = [];
        this.taken = [];
    }

    /** Keep names out of boxes of pixels. */
    keep(boxes) {
        this.taken.push(...boxes);
    }

    /** A name beside a pixel, `distance` away from it; a strong one is shown whatever it covers. */
    add(text, pixel, distance, isStrong) {
        if (pixel) this.wanted.push({ text, pixel, distance, isStrong });
    }

    /** The strong ones first, then the nearest. */
    draw() {
        const rank = ({ isStrong, pixel }) => (isStrong ? 0 : pixel[2]);
        this.wanted.sort((a, b) => rank(a) - rank(b));
        for (const name of this.wanted) {
            const box = this.boxOf(name);
            if (!name.isStrong && this.taken.some((other) => overlap(box, other))) continue;
            this.taken.push(box);
            this.context.textAlign = "left";
            this.context.textBaseline = "middle";
            drawText(this.context, this.theme, name.text, box.left, name.pixel[1], this.theme.text);
        }
    }

    boxOf({ text, pixel, distance, isStrong }) {
        const { context, theme } = this;
        context.font = `${isStrong ? 600 : 400} ${0.75 * theme.rem}px ${theme.family}`;
        const left = pixel[0] + distance + 0.35 * theme.rem;
        const half = 0.4 * theme.rem;
        return {
            left,
            right: left + context.measureText(text).width,
            top: pixel[1] - half,
            bottom: pixel[1] + half,
        };
    }
}

const overlap = (a, b) =>
    a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;

/** Text that is readable on whatever is behind it. */
export function drawText(context, theme, text, left, top, colour) {
    context.lineJoin = "round";
    context.lineWidth = (4 * theme.rem) / 16;
    context.strokeStyle = theme.background;
    context.strokeText(text, left, top);
    context.fillStyle = colour;
    context.fillText(text, left, top);
}
