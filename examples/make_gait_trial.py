"""Writes `gait_trial.c3d`, a synthetic gait trial: a made-up person crosses two force plates.

    python make_gait_trial.py [output.c3d]

Nothing but NumPy is used: the file is put together byte by byte here and in `c3d_records.py`, the
walk comes from `synthetic_walk.py`, loads and muscle activity from `synthetic_loads.py`. Every run
gives the same bytes; their SHA-256 is printed.
"""

from __future__ import annotations

import hashlib
import sys
from pathlib import Path
from typing import Any

import numpy as np
from c3d_records import BLOCK, Parameters, in_blocks, parameter, parameter_section
from numpy.typing import NDArray
from synthetic_loads import (
    MUSCLES,
    PLATES,
    joint_angles,
    kinetics,
    muscle_activity,
    plate_channels,
)
from synthetic_walk import (
    BODY_MASS_KG,
    HEIGHT_MM,
    PLATE_STRIKE_S,
    SIDES,
    STANCE_S,
    STRIDE_MM,
    STRIDE_S,
    Array,
    markers,
)

SEED = 20240229
FRAMES, RATE_HZ, SAMPLES_A_FRAME = 360, 100.0, 10
SCALE = 0.1  # unit of the stored residuals, mm; all values fit 16 bits in steps of it
SUBJECT = "Walker"

# First frame (counted from 0) and number of frames in which a camera system lost a marker.
GAPS = {
    "LTHI": [(0, 12)],
    "C7": [(350, 10)],
    "LASI": [(96, 14), (210, 7)],
    "RASI": [(151, 9)],
    "LFIN": [(60, 22)],
    "RWRB": [(118, 5), (231, 6)],
    "RTOE": [(196, 6)],
}
# Gaps that were filled by interpolation: values without a residual.
FILLED = {"RANK": (203, 8), "LKNE": (140, 5)}

FORCE_CHANNELS = ("Fx", "Fy", "Fz", "Mx", "My", "Mz")
FORCE_SCALES = (0.02, 0.02, 0.05, 10.0, 10.0, 2.0)  # N or Nmm a count
EMG_SCALE = 10.0 / 2**15  # V a count: 16 bits for -10 V to 10 V


class Noise:
    """Random numbers that are the same with every version of NumPy."""

    def __init__(self, seed: int) -> None:
        # The raw stream of a bit generator is fixed for good, the distributions are not.
        self.stream_ = np.random.PCG64(seed)

    def uniform(self, count: int) -> Array:
        return np.asarray((self.stream_.random_raw(count) >> 11) * 2.0**-53)

    def normal(self, count: int) -> Array:
        radius = np.sqrt(-2.0 * np.log1p(-self.uniform(count)))
        return np.asarray(radius * np.cos(2.0 * np.pi * self.uniform(count)))

    def band(self, count: int, low: float, high: float) -> Array:
        """Normal noise between two frequencies, given as parts of the sampling rate."""
        taps = np.arange(-100, 101)
        kernel = 2 * high * np.sinc(2 * high * taps) - 2 * low * np.sinc(2 * low * taps)
        kernel *= np.hamming(len(taps)) / np.sqrt(2 * (high - low))
        return np.convolve(self.normal(count + 200), kernel, mode="valid")


# ---- content


def point_table(noise: Noise, times: Array) -> tuple[list[str], dict[str, list[str]], Array]:
    """Labels, labels of each kind that is no marker, and (frames, points, 4) as stored."""
    rows = {}
    for label, path in markers(times).items():
        # Skin and cameras: slow and fast deviations of a few tenths of a millimetre.
        shaken = path + np.stack([0.5 * noise.band(FRAMES, 0.0, 0.08) for _ in "xyz"], axis=-1)
        rows[label] = np.column_stack([shaken, seen_by_cameras(noise)])
        for start, length in GAPS.get(label, []):
            rows[label][start : start + length] = [0.0, 0.0, 0.0, -1.0]
        start, length = FILLED.get(label, (0, 0))
        rows[label][start : start + length, 3] = 0.0
    loads = kinetics(times)
    outputs = {
        "ANGLES": joint_angles(times),
        "FORCES": loads.forces,
        "MOMENTS": loads.moments,
        "POWERS": loads.powers,
    }
    for values in outputs.values():
        for label, value in values.items():
            known = ~np.isnan(value).any(axis=1, keepdims=True)
            computed = np.column_stack([value, np.zeros(FRAMES)])
            rows[label] = np.where(known, computed, [0.0, 0.0, 0.0, -1.0])
    # Hundredths and no -0.0, so that the last bit of a sine on some machine changes nothing.
    table = np.round(np.stack(list(rows.values()), axis=1), 2) + 0.0
    return list(rows), {kind: list(values) for kind, values in outputs.items()}, table


def seen_by_cameras(noise: Noise) -> Array:
    """Fourth words: two to seven cameras in the high byte, residual 0.3 to 1.2 mm in the low."""
    ranks = np.argsort(noise.uniform(7 * FRAMES).reshape(FRAMES, 7), axis=1)
    seeing = 2 + np.floor(6 * noise.uniform(FRAMES))
    masks = np.where(ranks < seeing[:, None], 2 ** np.arange(7), 0).sum(axis=1)
    residuals = np.floor(3 + 10 * noise.uniform(FRAMES))
    return np.asarray(masks * 256 + residuals)


def analog_table(noise: Noise) -> tuple[dict[str, list[Any]], Array]:
    """Columns of the ANALOG group and (samples, channels) of raw counts."""
    samples = FRAMES * SAMPLES_A_FRAME
    times = np.arange(samples) / (RATE_HZ * SAMPLES_A_FRAME)
    columns: dict[str, list[Any]] = {
        name: [] for name in ("LABELS", "DESCRIPTIONS", "UNITS", "SCALE", "OFFSET")
    }
    raw = []

    def add(label: str, description: str, unit: str, scale: float, values: Array) -> None:
        offset = int(noise.uniform(1)[0] * 21)
        entries = (label, description, unit, scale, offset)
        for column, entry in zip(columns.values(), entries, strict=True):
            column.append(entry)
        raw.append(np.rint(values / scale) + offset)

    for number, plate in enumerate(PLATES, start=1):
        loads = plate_channels(plate, times)
        for index, (name, scale) in enumerate(zip(FORCE_CHANNELS, FORCE_SCALES, strict=True)):
            moment = name.startswith("M")
            values = loads[:, index] + noise.normal(samples) * (120.0 if moment else 0.4)
            description = f"Force plate {number} {name}"
            add(f"{name}{number}", description, "Nmm" if moment else "N", scale, values)
    for side in SIDES:
        for muscle in MUSCLES:
            activity = 0.012 + 0.45 * muscle_activity(side, muscle, times)
            values = activity * noise.band(samples, 0.02, 0.4)
            add(f"{side}{muscle}", f"EMG {side} {muscle}", "V", EMG_SCALE, values)
    return columns, np.stack(raw, axis=-1)


def foot_events() -> list[tuple[float, str, str]]:
    """(time, context, label) of every strike and off within the trial, in order of time."""
    found = []
    for side, context in (("L", "Left"), ("R", "Right")):
        for stride in range(-3, 4):
            strike = PLATE_STRIKE_S[side] + stride * STRIDE_S
            found += [(strike, context, "Foot Strike"), (strike + STANCE_S, context, "Foot Off")]
    last = (FRAMES - 1) / RATE_HZ
    return sorted((round(time, 3), side, label) for time, side, label in found if 0 <= time <= last)


def gait_parameters() -> list[tuple[str, str, float]]:
    """(name, unit, value); the walk is symmetric, so that both sides have the same ones."""
    single_support = STRIDE_S - STANCE_S  # the swing of the other leg
    return [
        ("Cadence", "steps/min", 120.0 / STRIDE_S),
        ("Walking Speed", "m/s", STRIDE_MM / 1000.0 / STRIDE_S),
        ("Stride Time", "s", STRIDE_S),
        ("Step Time", "s", STRIDE_S / 2),
        ("Foot Off", "%", 100.0 * STANCE_S / STRIDE_S),
        ("Single Support", "s", single_support),
        ("Double Support", "s", STANCE_S - single_support),
        ("Stride Length", "m", STRIDE_MM / 1000.0),
        ("Step Length", "m", STRIDE_MM / 2000.0),
    ]


# ---- groups


def point_group(labels: list[str], kinds: dict[str, list[str]], data_start: int) -> Parameters:
    of_kind = {label: kind for kind, held in kinds.items() for label in held}
    descriptions = [
        of_kind.get(label, "MARKERS").removesuffix("S").capitalize() for label in labels
    ]
    units = {"ANGLE": "deg", "FORCE": "N", "MOMENT": "Nmm/kg", "POWER": "W"}
    return [
        parameter("USED", len(labels), locked=True),
        parameter("SCALE", -SCALE, locked=True),
        parameter("RATE", RATE_HZ, locked=True),
        parameter("DATA_START", data_start, locked=True),
        parameter("FRAMES", FRAMES, locked=True),
        parameter("LABELS", labels),
        parameter("DESCRIPTIONS", descriptions),
        parameter("UNITS", "mm  "),
        parameter("X_SCREEN", "+X"),
        parameter("Y_SCREEN", "+Z"),
        *[parameter(kind, held) for kind, held in kinds.items()],
        *[parameter(f"{kind}_UNITS", [unit]) for kind, unit in units.items()],
    ]


def analog_group(columns: dict[str, list[Any]]) -> Parameters:
    return [
        parameter("USED", len(columns["LABELS"]), locked=True),
        *[parameter(name, column) for name, column in columns.items()],
        parameter("GEN_SCALE", 1.0),
        parameter("GAIN", [1] * len(columns["LABELS"])),  # -10 V to 10 V
        parameter("RATE", RATE_HZ * SAMPLES_A_FRAME, locked=True),
        parameter("FORMAT", "SIGNED", locked=True),
        parameter("BITS", 16, locked=True),
    ]


def force_platform_group() -> Parameters:
    return [
        parameter("USED", len(PLATES)),
        parameter("TYPE", [2] * len(PLATES)),
        parameter("ZERO", [1, 10]),
        parameter("CORNERS", np.stack([plate.corners for plate in PLATES])),
        parameter("ORIGIN", np.stack([plate.origin for plate in PLATES])),
        parameter("CHANNEL", np.arange(1, 6 * len(PLATES) + 1).reshape(-1, 6)),
    ]


def event_group() -> Parameters:
    times, contexts, labels = zip(*foot_events(), strict=True)
    descriptions = {
        "Foot Strike": "The foot first touches the floor",
        "Foot Off": "The foot leaves the floor",
    }
    return [
        parameter("USED", len(times)),
        parameter("CONTEXTS", list(contexts)),
        parameter("LABELS", list(labels)),
        parameter("DESCRIPTIONS", [descriptions[label] for label in labels]),
        parameter("SUBJECTS", [SUBJECT] * len(times)),
        parameter("TIMES", [divmod(time, 60.0) for time in times]),  # minutes, seconds
        parameter("ICON_IDS", [1 if label == "Foot Strike" else 2 for label in labels]),
        parameter("GENERIC_FLAGS", [0] * len(times)),
    ]


def analysis_group() -> Parameters:
    rows = [(*row, context) for context in ("Left", "Right") for row in gait_parameters()]
    names, units, values, contexts = (list(column) for column in zip(*rows, strict=True))
    return [
        parameter("USED", len(rows)),
        parameter("NAMES", names),
        parameter("CONTEXTS", contexts),
        parameter("SUBJECTS", [SUBJECT] * len(rows)),
        parameter("UNITS", units),
        parameter("DESCRIPTIONS", [""] * len(rows)),
        parameter("VALUES", values),
    ]


def other_groups() -> dict[str, Parameters]:
    return {
        "EVENT_CONTEXT": [
            parameter("USED", 3),
            parameter("LABELS", ["Left", "Right", "General"]),
            parameter("DESCRIPTIONS", ["Left side", "Right side", "Both sides"]),
            parameter("ICON_IDS", [0, 0, 0]),
            parameter("COLOURS", [[192, 0, 0], [0, 192, 0], [0, 0, 192]]),
        ],
        "TRIAL": [
            parameter("ACTUAL_START_FIELD", [1, 0]),
            parameter("ACTUAL_END_FIELD", [FRAMES, 0]),
            parameter("CAMERA_RATE", RATE_HZ),
        ],
        "SUBJECTS": [
            parameter("USED", 1),
            parameter("IS_STATIC", 0),
            parameter("USES_PREFIXES", 0),
            parameter("NAMES", [SUBJECT]),
            parameter("LABEL_PREFIXES", [" "]),
            parameter("MARKER_SETS", ["Gait40"]),
        ],
        "PROCESSING": [
            parameter("Bodymass", BODY_MASS_KG),
            parameter("Height", HEIGHT_MM),
            *[parameter(f"{side}LegLength", 905.0) for side in SIDES],
            *[parameter(f"{side}KneeWidth", 104.0) for side in SIDES],
            *[parameter(f"{side}AnkleWidth", 72.0) for side in SIDES],
        ],
        "MANUFACTURER": [
            parameter("COMPANY", "Synthetic"),
            parameter("SOFTWARE", "make_gait_trial"),
            parameter("VERSION_LABEL", "1.0"),
        ],
    }


# ---- the file


def header(points: int, channels: int, data_start: int) -> bytes:
    words = np.zeros(256, dtype="<u2")
    words[0] = 0x5002  # parameters start in block 2; 0x50 marks the format
    words[1:6] = [points, channels * SAMPLES_A_FRAME, 1, FRAMES, max(n for _, n in FILLED.values())]
    words[6:8] = np.array([-SCALE], dtype="<f4").view("<u2")
    words[8:10] = [data_start, SAMPLES_A_FRAME]
    words[10:12] = np.array([RATE_HZ], dtype="<f4").view("<u2")
    words[149] = 12345  # header events, of which there are none, have four letters
    return words.tobytes()


def data_section(points: Array, counts: Array) -> bytes:
    parts: list[NDArray[Any]] = [points.reshape(FRAMES, -1), counts.reshape(FRAMES, -1)]
    return in_blocks(np.hstack(parts).astype("<f4").tobytes())


def gait_trial() -> bytes:
    noise = Noise(SEED)
    labels, kinds, points = point_table(noise, np.arange(FRAMES) / RATE_HZ)
    columns, counts = analog_table(noise)

    def section(data_start: int) -> bytes:
        return parameter_section(
            {
                "POINT": point_group(labels, kinds, data_start),
                "ANALOG": analog_group(columns),
                "FORCE_PLATFORM": force_platform_group(),
                "EVENT": event_group(),
                "ANALYSIS": analysis_group(),
                **other_groups(),
            }
        )

    # The length of the section does not depend on the number that it tells.
    data_start = 2 + len(section(0)) // BLOCK
    head = header(len(labels), len(columns["LABELS"]), data_start)
    return head + section(data_start) + data_section(points, counts)


def main() -> None:
    default = Path(__file__).with_name("gait_trial.c3d")
    path = Path(sys.argv[1]) if len(sys.argv) > 1 else default
    content = gait_trial()
    path.write_bytes(content)
    print(f"{path.name}: {len(content)} bytes, SHA-256 {hashlib.sha256(content).hexdigest()}")


if __name__ == "__main__":
    main()
