// Mouse, pen and touch on the picture: orbit, pan, zoom, names, selection.

const TURN = 0.0075; // radians for a pixel
const STILL = 6; // pixels within which a press is a click
const NEAR = { mouse: 12, pen: 16, touch: 24 }; // pixels within which a marker is meant

export function listenToPointers(stage) {
    const { canvas } = stage;
    const held = new Map();
    let travelled = 0;

    const at = (event) => {
        const { left, top } = canvas.getBoundingClientRect();
        return [event.clientX - left, event.clientY - top];
    };

    canvas.addEventListener("pointerdown", (event) => {
        canvas.setPointerCapture(event.pointerId);
        held.set(event.pointerId, at(event));
        if (held.size === 1) travelled = 0;
        else travelled = Infinity; // two fingers select nothing
    });

    canvas.addEventListener("pointermove", (event) => {
        const place = at(event);
        const before = held.get(event.pointerId);
        if (!before) {
            hover(event, place);
            return;
        }
        const [dx, dy] = [place[0] - before[0], place[1] - before[1]];
        travelled += Math.hypot(dx, dy);
        const others = [...held].filter(([id]) => id !== event.pointerId).map(([, p]) => p);
        held.set(event.pointerId, place);
        if (others.length === 1) pinch(before, place, others[0]);
        else if (others.length === 0 && travelled > STILL) drag(event, dx, dy);
        stage.refresh();
    });

    function hover(event, place) {
        const index = stage.markerAt(...place, NEAR[event.pointerType] ?? NEAR.mouse);
        canvas.style.cursor = index >= 0 ? "pointer" : "";
        if (index === stage.hovered) return;
        stage.hovered = index;
        stage.refresh();
    }

    function drag(event, dx, dy) {
        const isPan = event.buttons & 6 || event.shiftKey || event.ctrlKey || event.metaKey;
        if (isPan) stage.pan(dx, dy);
        else stage.camera.orbit(-dx * TURN, dy * TURN);
    }

    /** Two fingers: their distance zooms, their middle pans. */
    function pinch(before, after, other) {
        const distance = (p) => Math.hypot(p[0] - other[0], p[1] - other[1]);
        if (distance(before) > 0 && distance(after) > 0) {
            stage.camera.zoom(distance(before) / distance(after));
        }
        stage.pan((after[0] - before[0]) / 2, (after[1] - before[1]) / 2);
    }

    const release = (event) => {
        if (!held.delete(event.pointerId) || event.type !== "pointerup" || travelled > STILL)
            return;
        if (event.button !== 0) return;
        const index = stage.markerAt(...at(event), NEAR[event.pointerType] ?? NEAR.mouse);
        stage.select(index, event.shiftKey || event.ctrlKey || event.metaKey);
    };
    canvas.addEventListener("pointerup", release);
    canvas.addEventListener("pointercancel", release);
    canvas.addEventListener("pointerleave", () => {
        if (stage.hovered < 0) return;
        stage.hovered = -1;
        stage.refresh();
    });

    canvas.addEventListener(
        "wheel",
        (event) => {
            event.preventDefault();
            stage.camera.zoom(Math.exp(wheelSteps(event) * 0.15));
            stage.refresh();
        },
        { passive: false },
    );
    canvas.addEventListener("dblclick", () => {
        stage.frameEverything();
        stage.refresh();
    });
    canvas.addEventListener("contextmenu", (event) => event.preventDefault());
}

/** How far a wheel was turned, in its notches, whatever the browser counts in. */
export function wheelSteps(event) {
    const size = [100, 3, 1][event.deltaMode] ?? 100;
    return Math.max(-3, Math.min(3, event.deltaY / size));
}
