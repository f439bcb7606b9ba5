"""Reads files with several threads, and says how long that took.

    python read_in_threads.py THREADS REPETITIONS FILE.c3d...

The answer is one line of JSON: the seconds of each repetition, in which each file is read once, and
whether every trial has the frames that the first one has. The threads take the next file each as
soon as they are done with one.
"""

from __future__ import annotations

import json
import sys
import time
from concurrent.futures import ThreadPoolExecutor

import moxPY as mox


def frames_of(path: str) -> int:
    with mox.read(path) as trial:
        return trial.frames


def main() -> None:
    threads, repetitions, paths = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3:]
    expected = frames_of(paths[0])
    seconds, complete = [], True
    with ThreadPoolExecutor(threads) as pool:
        for _ in range(repetitions):
            start = time.perf_counter()
            frames = list(pool.map(frames_of, paths))
            seconds.append(time.perf_counter() - start)
            complete = complete and set(frames) == {expected}
    print(json.dumps({"seconds": seconds, "complete": complete}))


if __name__ == "__main__":
    main()
