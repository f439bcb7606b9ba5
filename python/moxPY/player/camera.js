// From the laboratory to pixels: a camera that goes around a target, upright.

export const OPENING = (32 * Math.PI) / 180; // the angle of view across the shorter side of the picture
const STEEPEST = (89.5 * Math.PI) / 180;

export const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
export const cross = (a, b) => [
    a[1] * b[2] - a[2] * b[1],
    a[2] * b[0] - a[0] * b[2],
    a[0] * b[1] - a[1] * b[0],
];
export const plus = (a, b, factor = 1) => [
    a[0] + factor * b[0],
    a[1] + factor * b[1],
    a[2] + factor * b[2],
];
export const unit = (a) => {
    const length = Math.hypot(...a);
    return length > 0 ? a.map((x) => x / length) : a;
};

/** Where the camera stands for a view, in degrees: around from ahead towards the left, and up. */
export const VIEWS = {
    oblique: [-52, 14],
    right: [-90, 4],
    left: [90, 4],
    front: [0, 4],
    top: [-90, 90],
};

export class Camera {
    /** `up` and `ahead` are perpendicular directions of length 1. */
    constructor(up, ahead) {
        this.up = up;
        this.ahead = ahead;
        this.aside = cross(up, ahead); // to the left of who goes ahead
        this.target = [0, 0, 0];
        this.radius = 1;
        this.distance = 1;
        this.view("oblique");
    }

    view(name) {
        const [around, above] = VIEWS[name];
        this.around = (around * Math.PI) / 180;
        this.above = Math.min(STEEPEST, (above * Math.PI) / 180);
    }

    /** Make a ball around the target fill the picture. */
    fit(radius) {
        this.radius = radius > 0 ? radius : 1;
        this.distance = this.radius / Math.sin(OPENING / 2);
    }

    orbit(around, above) {
        this.around += around;
        this.above = Math.min(STEEPEST, Math.max(-STEEPEST, this.above + above));
    }

    zoom(factor) {
        const least = this.radius / 50;
        this.distance = Math.min(this.radius * 100, Math.max(least, this.distance * factor));
    }

    /** What is in front of the camera, to its right and above it, and where it stands. */
    axes() {
        const level = plus(
            this.ahead.map((x) => x * Math.cos(this.around)),
            this.aside,
            Math.sin(this.around),
        );
        const back = plus(
            level.map((x) => x * Math.cos(this.above)),
            this.up,
            Math.sin(this.above),
        );
        const front = back.map((x) => -x);
        const right = unit(cross(front, this.up));
        return {
            front,
            right,
            top: cross(right, front),
            eye: plus(this.target, back, this.distance),
        };
    }

    /** Pixels that a length of 1 has at a distance of 1. */
    static scale(width, height) {
        return (0.5 * Math.min(width, height)) / Math.tan(OPENING / 2);
    }

    /**
     * The matrix of 3 × 4 numbers, row by row, that takes (x, y, z, 1) to (u, v, w): the pixel is u / w
     * from the left and v / w from the top, and w the distance along the line of sight.
     */
    matrix(width, height) {
        const { front, right, top, eye } = this.axes();
        const scale = Camera.scale(width, height);
        const row = (axis, factor, middle) => {
            const direction = front.map((x, i) => factor * axis[i] + middle * x);
            return [...direction, -dot(direction, eye)];
        };
        return [
            ...row(right, scale, width / 2),
            ...row(top, -scale, height / 2),
            ...row(front, 0, 1),
        ];
    }

    /** Move the target along the picture by pixels. */
    pan(dx, dy, width, height) {
        const { right, top } = this.axes();
        const length = this.distance / Camera.scale(width, height);
        this.target = plus(plus(this.target, right, -dx * length), top, dy * length);
    }
}

/** Takes places to pixels, and what is behind the camera away. */
export class Projection {
    constructor(matrix, nearest) {
        this.matrix = matrix;
        this.nearest = nearest;
    }

    depth(p) {
        const m = this.matrix;
        return m[8] * p[0] + m[9] * p[1] + m[10] * p[2] + m[11];
    }

    /** [left, top, distance] of a place; null for one behind the camera. */
    pixel(p) {
        const m = this.matrix;
        const w = this.depth(p);
        if (!(w > this.nearest)) return null;
        return [
            (m[0] * p[0] + m[1] * p[1] + m[2] * p[2] + m[3]) / w,
            (m[4] * p[0] + m[5] * p[1] + m[6] * p[2] + m[7]) / w,
            w,
        ];
    }

    /** The corners in pixels of a line or an area, as far as it is in front of the camera. */
    outline(places, isClosed) {
        const found = [];
        const count = isClosed ? places.length : places.length - 1;
        const isIn = (p) => this.depth(p) > this.nearest;
        if (!isClosed && isIn(places[0])) found.push(this.pixel(places[0]));
        for (let i = 0; i < count; i += 1) {
            const [a, b] = [places[i], places[(i + 1) % places.length]];
            if (isIn(a) !== isIn(b)) found.push(this.pixel(this.between(a, b)));
            if (isIn(b)) found.push(this.pixel(b));
        }
        return found.filter(Boolean);
    }

    between(a, b) {
        const [one, other] = [this.depth(a), this.depth(b)];
        const part = (this.nearest * (1 + 1e-6) - one) / (other - one);
        return plus(a, plus(b, a, -1), part);
    }
}

/** Draw a line or an area through pixels. */
export function trace(context, pixels, isClosed) {
    if (pixels.length < 2) return;
    context.moveTo(pixels[0][0], pixels[0][1]);
    for (let i = 1; i < pixels.length; i += 1) context.lineTo(pixels[i][0], pixels[i][1]);
    if (isClosed) context.closePath();
}
