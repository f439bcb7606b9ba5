// Light and dark. The colours stand in the style sheet; canvases are drawn with what it says now.

const COLOURS = [
    "background",
    "text",
    "dim",
    "line",
    "grid",
    "left",
    "right",
    "middle",
    "force",
    "plate",
    "shadow",
    "series-1",
    "series-2",
    "series-3",
    "series-4",
];

export class Theme {
    constructor() {
        this.root = document.documentElement;
        this.system = matchMedia("(prefers-color-scheme: dark)");
        this.listeners = [];
        this.system.addEventListener("change", () => this.read());
        this.read();
    }

    get isDark() {
        const { theme } = this.root.dataset;
        return theme ? theme === "dark" : this.system.matches;
    }

    /** "light" or "dark"; anything else is what the system has. */
    choose(name) {
        if (name === "light" || name === "dark") this.root.dataset.theme = name;
        else delete this.root.dataset.theme;
        this.read();
    }

    toggle() {
        this.choose(this.isDark ? "light" : "dark");
    }

    read() {
        const style = getComputedStyle(this.root);
        for (const name of COLOURS) this[name] = style.getPropertyValue(`--${name}`).trim();
        this.family = getComputedStyle(document.body).fontFamily;
        for (const listener of this.listeners) listener();
    }

    /** The colour of a side; that of the middle where there is none. */
    side(side) {
        return side === "left" ? this.left : side === "right" ? this.right : this.middle;
    }

    /** What a rem has of pixels: everything that is drawn grows with the letters. */
    get rem() {
        return parseFloat(getComputedStyle(this.root).fontSize) || 16;
    }
}

/** A canvas as large as its place, in pixels of the page. Gives its context and size. */
export function fitted(canvas) {
    const { width, height } = canvas.getBoundingClientRect();
    const ratio = Math.min(window.devicePixelRatio || 1, 3);
    const [columns, rows] = [Math.round(width * ratio), Math.round(height * ratio)];
    if (canvas.width !== columns || canvas.height !== rows) {
        canvas.width = columns;
        canvas.height = rows;
    }
    const context = canvas.getContext("2d");
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    return { context, width, height };
}
