"""A person who never was, walking: motion of the markers, joint angles and ground loads.

The walk is strictly periodic. A foot is planted where its foot strike puts it, rolls over heel and
forefoot, and swings to the next footprint; the pelvis glides above; hip and knee follow from the
place of pelvis and ankle. So foot strikes, foot offs, markers, angles and loads belong together.

Laboratory: millimetres, x is the direction of walking, y points left, z up. Times are seconds after
the first frame, angles radians inside and degrees in results.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
from numpy.typing import NDArray

Array = NDArray[np.float64]

BODY_MASS_KG, HEIGHT_MM, GRAVITY = 72.0, 1780.0, 9.81
WEIGHT_N = BODY_MASS_KG * GRAVITY
STRIDE_S, STANCE_S = 1.10, 0.66
STRIDE_MM = 1300.0
THIGH_MM, SHANK_MM = 440.0, 434.0
PELVIC_TILT_DEG = 5.0

# A foot strike of each side and where the heel lands: these two steps meet the force plates.
PLATE_STRIKE_S = {"R": 1.30, "L": 1.85}
PLATE_HEEL_MM = {"R": 170.0, "L": 820.0}
SIDES = {"L": 1.0, "R": -1.0}  # direction of "lateral" along y
FOOT_Y_MM = 85.0

# Points of the foot when it stands flat: forward of and above the contact of the heel.
ANKLE, FOREFOOT = (50.0, 80.0), (185.0, 0.0)
SWING_CLEARANCE_MM = 18.0
HEEL_PITCH, FOREFOOT_PITCH = np.radians(20.0), np.radians(-54.0)
HEEL_ROCKER, FOREFOOT_ROCKER = 0.15, 0.55  # as parts of the stance


def smooth_step(part: Array) -> Array:
    """0 to 1 without a corner while `part` goes from 0 to 1."""
    part = np.clip(part, 0.0, 1.0)
    return part * part * (3.0 - 2.0 * part)


def cycle(side: str, times: Array) -> tuple[Array, Array]:
    """Seconds since the last foot strike of a side, and where its heel landed (mm)."""
    strides = np.floor((times - PLATE_STRIKE_S[side]) / STRIDE_S + 1e-9)
    since = times - PLATE_STRIKE_S[side] - strides * STRIDE_S
    return since, PLATE_HEEL_MM[side] + strides * STRIDE_MM


def stance_foot(stance: Array) -> Array:
    """Ankle x, ankle z and pitch (toes up) of a planted foot, columns; `stance` from 0 to 1."""
    toes = np.clip((stance - FOREFOOT_ROCKER) / (1 - FOREFOOT_ROCKER), 0.0, None)
    pitch = HEEL_PITCH * (1 - smooth_step(stance / HEEL_ROCKER)) + FOREFOOT_PITCH * toes**2
    # The foot turns about the heel while the toes are up and about the forefoot afterwards.
    pivot_x = np.where(pitch < 0, FOREFOOT[0], 0.0)
    arm_x, arm_z = ANKLE[0] - pivot_x, ANKLE[1]
    x = pivot_x + arm_x * np.cos(pitch) - arm_z * np.sin(pitch)
    z = arm_x * np.sin(pitch) + arm_z * np.cos(pitch)
    return np.stack([x, z, pitch], axis=-1)


def swing_foot(swing: Array) -> Array:
    """The same three between two stances: a cubic that takes over their place and speed."""
    duration, step = STRIDE_S - STANCE_S, 1e-6
    start, end = stance_foot(np.array([1.0, 0.0]))
    end[0] += STRIDE_MM
    leaving = (start - stance_foot(np.array([1.0 - step]))[0]) / (step * STANCE_S) * duration
    w = swing[:, None]
    path = start + (end - start) * (3 * w**2 - 2 * w**3) + leaving * (w - 2 * w**2 + w**3)
    clearance = (4 * w * (1 - w)) ** 2 * [0.0, SWING_CLEARANCE_MM, 0.0]
    return np.asarray(path + clearance)


@dataclass(frozen=True)
class Leg:
    """One leg over time: joint centres (frames, 3) and pitches of its segments, forward up."""

    hip: Array
    knee: Array
    ankle: Array
    thigh_pitch: Array
    shank_pitch: Array
    foot_pitch: Array


@dataclass(frozen=True)
class Pelvis:
    centre: Array
    tilt: Array  # forward
    list: Array  # left side up
    yaw: Array  # to the left


def pelvis(times: Array) -> Pelvis:
    phase = 2 * np.pi * (times - PLATE_STRIKE_S["R"]) / STRIDE_S
    speed = STRIDE_MM / STRIDE_S
    # Half-way between both feet at each foot strike, lowest in double support, over the leg
    # that carries in single support.
    centre = np.stack(
        [
            PLATE_HEEL_MM["R"] - 280.0 + speed * (times - PLATE_STRIKE_S["R"]),
            -18.0 * np.sin(phase - 0.35),
            918.0 - 24.0 * np.cos(2 * phase - 0.6),
        ],
        axis=-1,
    )
    return Pelvis(
        centre,
        tilt=np.radians(PELVIC_TILT_DEG + 1.2 * np.cos(2 * phase)),
        list=np.radians(-3.5 * np.sin(phase)),
        yaw=np.radians(5.0 * np.cos(phase)),
    )


def leg(side: str, times: Array) -> Leg:
    since, heel = cycle(side, times)
    in_stance = since <= STANCE_S + 1e-9
    foot = np.where(
        in_stance[:, None],
        stance_foot(np.minimum(since / STANCE_S, 1.0)),
        swing_foot(np.clip((since - STANCE_S) / (STRIDE_S - STANCE_S), 0.0, 1.0)),
    )
    lateral = np.full_like(times, SIDES[side] * FOOT_Y_MM)
    ankle = np.stack([heel + foot[:, 0], lateral, foot[:, 1]], axis=-1)
    body = pelvis(times)
    hip = place(body.centre, (0.0, SIDES[side] * FOOT_Y_MM, 0.0), roll=body.list, yaw=body.yaw)
    # Two bars of known length between hip and ankle; the knee bends forward.
    reach = np.hypot(ankle[:, 0] - hip[:, 0], ankle[:, 2] - hip[:, 2])
    direction = np.arctan2(ankle[:, 0] - hip[:, 0], hip[:, 2] - ankle[:, 2])
    bend = np.arccos((THIGH_MM**2 + reach**2 - SHANK_MM**2) / (2 * THIGH_MM * reach))
    thigh_pitch = direction + bend
    knee = hip + THIGH_MM * np.stack(
        [np.sin(thigh_pitch), np.zeros_like(times), -np.cos(thigh_pitch)], axis=-1
    )
    knee[:, 1] = (hip[:, 1] + ankle[:, 1]) / 2
    shank_pitch = np.arctan2(ankle[:, 0] - knee[:, 0], knee[:, 2] - ankle[:, 2])
    return Leg(hip, knee, ankle, thigh_pitch, shank_pitch, foot[:, 2])


def place(
    origin: Array,
    offset: tuple[float, float, float],
    pitch: Any = 0.0,
    roll: Any = 0.0,
    yaw: Any = 0.0,
) -> Array:
    """Origin plus (forward, left, up) of a body turned by pitch (forward end up), roll and yaw."""
    x, y, z = (np.asarray(length) for length in offset)
    y, z = y * np.cos(roll) - z * np.sin(roll), y * np.sin(roll) + z * np.cos(roll)
    x, z = x * np.cos(pitch) - z * np.sin(pitch), x * np.sin(pitch) + z * np.cos(pitch)
    x, y = x * np.cos(yaw) - y * np.sin(yaw), x * np.sin(yaw) + y * np.cos(yaw)
    return np.asarray(origin + np.stack(np.broadcast_arrays(x, y, z), axis=-1))


def markers(times: Array) -> dict[str, Array]:
    """All markers without noise: label -> (frames, 3)."""
    body = pelvis(times)
    phase = 2 * np.pi * (times - PLATE_STRIKE_S["R"]) / STRIDE_S
    trunk = {"pitch": np.radians(-4.0 + np.cos(2 * phase)), "yaw": -0.8 * body.yaw}
    chest = place(body.centre, (0.0, 0.0, 100.0))
    neck = place(chest, (-10.0, 0.0, 520.0), **trunk)
    found = {}
    for side, lateral in SIDES.items():
        found[f"{side}FHD"] = place(neck, (90.0, lateral * 70.0, 130.0))
        found[f"{side}BHD"] = place(neck, (-90.0, lateral * 70.0, 125.0))
    found["C7"] = place(chest, (-70.0, 0.0, 480.0), **trunk)
    found["T10"] = place(chest, (-105.0, 0.0, 250.0), **trunk)
    found["CLAV"] = place(chest, (60.0, 0.0, 430.0), **trunk)
    found["STRN"] = place(chest, (105.0, 0.0, 270.0), **trunk)
    for side, lateral in SIDES.items():
        found |= _arm(side, lateral, place(chest, (0.0, lateral * 180.0, 410.0), **trunk), phase)
    turned = {"pitch": np.radians(PELVIC_TILT_DEG) - body.tilt, "roll": body.list, "yaw": body.yaw}
    for side, lateral in SIDES.items():
        found[f"{side}ASI"] = place(body.centre, (80.0, lateral * 118.0, 70.0), **turned)
        found[f"{side}PSI"] = place(body.centre, (-95.0, lateral * 46.0, 82.0), **turned)
    for side, lateral in SIDES.items():
        found |= _leg_markers(side, lateral, leg(side, times))
    return found


def _arm(side: str, lateral: float, shoulder: Array, phase: Array) -> dict[str, Array]:
    # An arm swings forward with the leg of the other side.
    swing = lateral * np.cos(phase - 0.2)
    upper = np.radians(-4.0 + 19.0 * swing)
    fore = upper + np.radians(28.0 + 10.0 * swing)
    elbow = place(shoulder, (0.0, lateral * 25.0, -290.0), upper)
    wrist = place(elbow, (0.0, lateral * -5.0, -255.0), fore)
    return {
        f"{side}SHO": place(shoulder, (0.0, 0.0, 45.0)),
        f"{side}UPA": place(shoulder, (15.0, lateral * 55.0, -150.0), upper),
        f"{side}ELB": place(elbow, (0.0, lateral * 38.0, 0.0)),
        f"{side}FRM": place(elbow, (10.0, lateral * 34.0, -130.0), fore),
        f"{side}WRA": place(wrist, (32.0, lateral * 12.0, 0.0), fore),
        f"{side}WRB": place(wrist, (-30.0, lateral * 16.0, 0.0), fore),
        f"{side}FIN": place(wrist, (8.0, lateral * 22.0, -85.0), fore),
    }


def _leg_markers(side: str, lateral: float, limb: Leg) -> dict[str, Array]:
    def on_foot(forward: float, left: float, up: float) -> Array:
        offset = (forward - ANKLE[0], lateral * left, up - ANKLE[1])
        return place(limb.ankle, offset, limb.foot_pitch)

    return {
        f"{side}THI": place(limb.hip, (20.0, lateral * 85.0, -250.0), limb.thigh_pitch),
        f"{side}KNE": place(limb.knee, (0.0, lateral * 58.0, 0.0)),
        f"{side}TIB": place(limb.knee, (12.0, lateral * 60.0, -210.0), limb.shank_pitch),
        f"{side}ANK": place(limb.ankle, (0.0, lateral * 42.0, 0.0)),
        f"{side}HEE": on_foot(-18.0, 0.0, 42.0),
        f"{side}TOE": on_foot(186.0, 2.0, 48.0),
        f"{side}MT5": on_foot(160.0, 48.0, 30.0),
    }
