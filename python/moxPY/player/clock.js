// The frame that is shown, and playing. Frames count from 0 here, and as the file counts for people.

export class Clock {
    constructor(frames, rate, firstFrame) {
        this.frames = frames;
        this.rate = rate > 0 ? rate : 100;
        this.firstFrame = firstFrame;
        this.frame = 0;
        this.speed = 1;
        this.isLooping = true;
        this.isPlaying = false;
        this.listeners = [];
    }

    get last() {
        return Math.max(0, this.frames - 1);
    }

    /** Seconds on the trial's clock, on which the file's frame 1 is 0. */
    time(frame) {
        return (frame + this.firstFrame - 1) / this.rate;
    }

    go(frame) {
        const next = Math.min(this.last, Math.max(0, Math.round(frame)));
        if (!Number.isFinite(next)) return;
        // What plays goes on from there.
        this.begin(next);
        if (next === this.frame) return;
        this.frame = next;
        this.tell();
    }

    tell() {
        for (const listener of this.listeners) listener();
    }

    begin(frame) {
        this.origin = { frame, instant: performance.now() };
    }

    play() {
        if (this.isPlaying || this.frames < 2) return;
        if (this.frame >= this.last) this.frame = 0;
        this.isPlaying = true;
        this.begin(this.frame);
        this.tell();
        requestAnimationFrame(() => this.turn());
    }

    pause() {
        if (!this.isPlaying) return;
        this.isPlaying = false;
        this.tell();
    }

    toggle() {
        if (this.isPlaying) this.pause();
        else this.play();
    }

    setSpeed(speed) {
        this.speed = speed;
        this.begin(this.frame);
    }

    turn() {
        if (!this.isPlaying) return;
        const seconds = (performance.now() - this.origin.instant) / 1000;
        let frame = Math.floor(this.origin.frame + seconds * this.rate * this.speed);
        if (frame > this.last) {
            if (!this.isLooping) {
                this.go(this.last);
                this.pause();
                return;
            }
            frame = 0;
            this.begin(0);
        }
        if (frame !== this.frame) {
            this.frame = frame;
            this.tell();
        }
        requestAnimationFrame(() => this.turn());
    }
}
