// What is shown: switches, views, the list of markers.

const SWITCHES = [
    ["names", "Names", "n"],
    ["sticks", "Sticks", "s"],
    ["trails", "Trails", "t"],
    ["gaps", "Gaps, dashed", "g"],
    ["forces", "Forces", "r"],
    ["plates", "Plates", "p"],
    ["segments", "Segment axes", "x"],
    ["grid", "Floor", "b"],
];

export class Controls {
    constructor(elements, trial, stage, theme) {
        Object.assign(this, { elements, trial, stage, theme });
        this.boxes = new Map();
        this.makeSwitches();
        this.makeList();
        elements.show.addEventListener("click", () => this.open(elements.drawer.hidden));
        elements.closeDrawer.addEventListener("click", () => this.open(false));
        elements.theme.addEventListener("click", () => theme.toggle());
        elements.follow.addEventListener("click", () => this.follow(!stage.isFollowing));
        elements.help.addEventListener("click", () => elements.helpText.showModal());
        elements.wideScreen.addEventListener("click", () => this.toggleWideScreen());
        elements.wideScreen.hidden = !document.fullscreenEnabled;
        for (const button of document.querySelectorAll("[data-view]")) {
            button.addEventListener("click", () => stage.view(button.dataset.view));
        }
        elements.larger.addEventListener("click", () => this.scaleArrows(1.25));
        elements.smaller.addEventListener("click", () => this.scaleArrows(0.8));
        elements.arrowSize.hidden = !stage.arrows.length;
        stage.selecting = [() => this.mark()];
    }

    open(isOpen) {
        this.elements.drawer.hidden = !isOpen;
        this.elements.show.setAttribute("aria-expanded", String(isOpen));
        // A field that has the focus would bring the keyboard of a phone up.
        const hasKeys = !matchMedia("(pointer: coarse)").matches;
        const { filter, show } = this.elements;
        (isOpen && hasKeys ? filter : show).focus({ preventScroll: true });
    }

    follow(isFollowing) {
        this.elements.follow.setAttribute("aria-pressed", String(isFollowing));
        this.stage.follow(isFollowing);
    }

    scaleArrows(factor) {
        this.stage.arrows.factor *= factor;
        this.stage.refresh();
    }

    toggleWideScreen() {
        if (document.fullscreenElement) document.exitFullscreen();
        else document.documentElement.requestFullscreen?.();
    }

    /** Whether the trial has anything that a switch could show. */
    has(what) {
        const { markers, sticks, plates, segments } = this.trial;
        return {
            names: markers.length + segments.length,
            sticks: sticks.length,
            trails: markers.length,
            gaps: markers.some((marker) => marker.missing),
            forces: this.stage.arrows.length,
            plates: plates.length,
            segments: segments.length,
            grid: true,
        }[what];
    }

    makeSwitches() {
        for (const [what, text, key] of SWITCHES) {
            if (!this.has(what)) continue;
            const label = document.createElement("label");
            label.className = "switch";
            label.title = `Key: ${key.toUpperCase()}`;
            const box = document.createElement("input");
            box.type = "checkbox";
            box.name = what;
            box.checked = this.stage.shown[what];
            box.addEventListener("change", () => {
                this.stage.shown[what] = box.checked;
                this.stage.refresh();
            });
            const name = document.createElement("span");
            name.textContent = text;
            label.append(box, name);
            this.elements.switches.append(label);
            this.boxes.set(key, box);
        }
    }

    /** Turn the switch of a key; whether there is one. */
    turn(key) {
        const box = this.boxes.get(key);
        box?.click();
        return Boolean(box);
    }

    makeList() {
        const { list, filter, markersPart } = this.elements;
        markersPart.hidden = !this.trial.markers.length;
        this.items = this.trial.markers.map((marker, index) => {
            const item = document.createElement("button");
            item.type = "button";
            item.className = "marker";
            item.dataset.side = marker.side;
            const name = document.createElement("span");
            name.textContent = marker.label;
            item.append(name);
            if (marker.missing) {
                const gaps = document.createElement("small");
                const part = (100 * marker.missing) / this.trial.frames;
                gaps.textContent = `${part < 1 ? "< 1" : Math.round(part)} % not seen`;
                item.append(gaps);
            }
            item.addEventListener("click", () => this.stage.select(index, true));
            return item;
        });
        list.append(...this.items);
        filter.addEventListener("input", () => {
            const wanted = filter.value.trim().toLowerCase();
            this.items.forEach((item, index) => {
                item.hidden = !this.trial.markers[index].label.toLowerCase().includes(wanted);
            });
        });
        this.mark();
    }

    mark() {
        this.items.forEach((item, index) =>
            item.setAttribute("aria-pressed", String(this.stage.selected.has(index))),
        );
    }
}
