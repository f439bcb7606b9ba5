// Keys. What is typed into a field stays there.

const VIEW_KEYS = { 1: "oblique", 2: "right", 3: "left", 4: "front", 5: "top" };

export function listenToKeys({ clock, timeline, stage, controls, stretch, theme, elements }) {
    const speeds = [...elements.speed.options].map((option) => option.value);

    function changeSpeed(step) {
        const index = speeds.indexOf(elements.speed.value) + step;
        if (index < 0 || index >= speeds.length) return;
        elements.speed.value = speeds[index];
        clock.setSpeed(Number(speeds[index]));
    }

    const actions = {
        " ": () => clock.toggle(),
        ArrowLeft: (event) => timeline.step(event.shiftKey ? -10 : -1),
        ArrowRight: (event) => timeline.step(event.shiftKey ? 10 : 1),
        ArrowUp: () => timeline.stepEvent(1),
        ArrowDown: () => timeline.stepEvent(-1),
        Home: () => clock.go(0),
        End: () => clock.go(clock.last),
        ",": () => changeSpeed(-1),
        ".": () => changeSpeed(1),
        "+": () => zoom(0.85),
        "=": () => zoom(0.85),
        "-": () => zoom(1 / 0.85),
        "[": () => stretch.zoom(1 / 0.7),
        "]": () => stretch.zoom(0.7),
        0: () => stretch.whole(),
        f: () => controls.follow(!stage.isFollowing),
        m: () => controls.open(elements.drawer.hidden),
        d: () => theme.toggle(),
        w: () => controls.toggleWideScreen(),
        "?": () => elements.helpText.showModal(),
        Escape: () => {
            if (!elements.drawer.hidden) controls.open(false);
            else stage.select(-1);
        },
    };

    function zoom(factor) {
        stage.camera.zoom(factor);
        stage.refresh();
    }

    document.addEventListener("keydown", (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey || elements.helpText.open) return;
        const isTyping = event.target.closest?.("input:not([type=checkbox]), select, textarea");
        if (isTyping && event.key !== "Escape") return;
        // A button that has the focus is pressed by the bar.
        if (event.key === " " && event.target.closest?.("button, label, [type=checkbox]")) return;
        const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
        if (actions[key]) actions[key](event);
        else if (VIEW_KEYS[key]) stage.view(VIEW_KEYS[key]);
        else if (!controls.turn(key)) return;
        event.preventDefault();
    });
}
