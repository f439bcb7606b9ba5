"""What the synthetic walker does to the ground and what that asks of joints and muscles."""

from __future__ import annotations

from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray
from synthetic_walk import (
    BODY_MASS_KG,
    FOOT_Y_MM,
    PLATE_HEEL_MM,
    PLATE_STRIKE_S,
    SIDES,
    STANCE_S,
    STRIDE_S,
    WEIGHT_N,
    Array,
    cycle,
    leg,
    pelvis,
    smooth_step,
)

# Weight below a joint as a part of the body's.
WEIGHT_BELOW = {"Ankle": 0.0145, "Knee": 0.061, "Hip": 0.161}
# A positive moment makes the ankle bend down, knee and hip stretch.
STRETCHING = {"Ankle": 1.0, "Knee": -1.0, "Hip": 1.0}

# Bursts of each muscle: (part of the gait cycle, width, strength).
MUSCLES = {
    "RectFem": [(0.06, 0.055, 1.0), (0.96, 0.035, 0.5), (0.60, 0.04, 0.3)],
    "BicFem": [(0.93, 0.06, 1.0), (0.04, 0.05, 0.5)],
    "TibAnt": [(0.03, 0.05, 1.0), (0.68, 0.06, 0.5), (0.92, 0.06, 0.6)],
    "Gastroc": [(0.42, 0.075, 1.0), (0.25, 0.08, 0.35)],
}


@dataclass(frozen=True)
class Plate:
    """A force plate in the floor: its axes as columns of `axes`, z pointing down."""

    side: str  # of the foot that meets it
    centre: Array
    axes: Array
    half_size: tuple[float, float]  # along its own x and y
    origin: Array  # from the measuring origin to the centre of the surface, plate axes

    @property
    def corners(self) -> Array:
        """(4, 3) in the laboratory, by the quadrants of the plate: ++, -+, --, +-."""
        a, b = self.half_size
        local = np.array([[a, b, 0], [-a, b, 0], [-a, -b, 0], [a, -b, 0]])
        return np.asarray(local @ self.axes.T + self.centre)


def columns(*axes: tuple[float, float, float]) -> Array:
    return np.array(axes).T


PLATES = [
    Plate(
        "R",
        np.array([300.0, 0.0, 0.0]),
        columns((1, 0, 0), (0, -1, 0), (0, 0, -1)),
        (300.0, 200.0),
        np.array([0.6, -1.2, -41.3]),
    ),
    Plate(
        "L",
        np.array([905.0, 0.0, 0.0]),
        columns((-1, 0, 0), (0, 1, 0), (0, 0, -1)),
        (300.0, 200.0),
        np.array([-0.9, 0.4, -40.7]),
    ),
]


@dataclass(frozen=True)
class GroundReaction:
    """The plate step of one foot: force on the foot (N), where, and free moment (Nmm, up)."""

    loaded: NDArray[np.bool_]
    force: Array
    place: Array
    free_moment: Array


def ground_reaction(side: str, times: Array) -> GroundReaction:
    stance = (times - PLATE_STRIKE_S[side]) / STANCE_S
    # Some slack for rounding: the first and the last instant carry nothing anyway.
    loaded = (stance > -1e-6) & (stance < 1 + 1e-6)
    u = np.clip(stance, 0.0, 1.0)
    lateral = SIDES[side]
    braking = -0.19 * np.sin(2 * np.pi * u) * np.sin(np.pi * u) ** 0.5
    inwards = -lateral * 0.045 * (np.sin(np.pi * u) + 0.35 * np.sin(3 * np.pi * u))
    upwards = 1.15 * np.sin(np.pi * u) + 0.36 * np.sin(3 * np.pi * u)
    force = WEIGHT_N * np.stack([braking, inwards, upwards], axis=-1) * loaded[:, None]
    forward = PLATE_HEEL_MM[side] + 15.0 + 70.0 * u + 130.0 * smooth_step(u)
    left = lateral * (FOOT_Y_MM - 6.0 + 13.0 * np.sin(np.pi * u))
    place = np.stack([forward, left, np.zeros_like(u)], axis=-1)
    return GroundReaction(loaded, force, place, lateral * 4200.0 * np.sin(2 * np.pi * u) * loaded)


def plate_channels(plate: Plate, times: Array) -> Array:
    """(samples, 6): force on the foot and moment about the plate's measuring origin, plate axes.

    What laboratories record: z of the plate points down, the ground pushes the foot up, so that
    Fz is negative under load.
    """
    ground = ground_reaction(plate.side, times)
    force = ground.force @ plate.axes
    place = (ground.place - plate.centre) @ plate.axes
    moment = np.cross(place, force)
    moment[:, 2] -= ground.free_moment  # upwards is along -z
    return np.hstack([force, moment - np.cross(force, plate.origin)])


def joint_angles(times: Array) -> dict[str, Array]:
    """Flexion, abduction and rotation in degrees; flexion follows from the segments."""
    found = {}
    body = pelvis(times)
    for side, lateral in SIDES.items():
        limb = leg(side, times)
        phase = 2 * np.pi * cycle(side, times)[0] / STRIDE_S
        tilts = [body.tilt, -lateral * body.list, -lateral * body.yaw]
        flexions = {
            "Hip": limb.thigh_pitch + body.tilt,
            "Knee": limb.thigh_pitch - limb.shank_pitch,
            "Ankle": limb.foot_pitch - limb.shank_pitch,
        }
        found[f"{side}PelvisAngles"] = np.degrees(np.stack(tilts, axis=-1))
        for joint, flexion in flexions.items():
            others = [3.5 * np.sin(phase - 0.4), 5.0 + 3.0 * np.cos(phase + 0.8)]
            found[f"{side}{joint}Angles"] = np.stack([np.degrees(flexion), *others], axis=-1)
    return found


@dataclass(frozen=True)
class Kinetics:
    """Per label (frames, 3); NaN where the foot does not stand on its plate."""

    forces: dict[str, Array]  # N
    moments: dict[str, Array]  # Nmm per kg of body mass
    powers: dict[str, Array]  # W, in the third component


def kinetics(times: Array) -> Kinetics:
    """Joint loads of the plate steps, without the (small) inertia of the leg."""
    found = Kinetics({}, {}, {})
    angles, step = joint_angles(times), 1e-4
    later = joint_angles(times + step)
    for side, lateral in SIDES.items():
        limb = leg(side, times)
        ground = ground_reaction(side, times)
        absent = np.where(ground.loaded, 0.0, np.nan)[:, None]
        found.forces[f"{side}GroundReactionForce"] = ground.force + absent
        centres = {"Ankle": limb.ankle, "Knee": limb.knee, "Hip": limb.hip}
        for joint, centre in centres.items():
            turning = np.cross(ground.place - centre, ground.force)
            # Flexion, abduction, rotation: what muscles do against the ground.
            moment = turning[:, [1, 0, 2]] * [-STRETCHING[joint], lateral, lateral]
            label = f"{side}{joint}"
            speed = np.radians(later[f"{label}Angles"] - angles[f"{label}Angles"])[:, 0] / step
            power = np.zeros_like(moment)
            power[:, 2] = -moment[:, 0] / 1000.0 * speed
            weight = [0.0, 0.0, WEIGHT_BELOW[joint] * WEIGHT_N]
            found.forces[f"{label}Force"] = ground.force - weight + absent
            found.moments[f"{label}Moment"] = moment / BODY_MASS_KG + absent
            found.powers[f"{label}Power"] = power + absent
    return found


def muscle_activity(side: str, muscle: str, times: Array) -> Array:
    """0 at rest to about 1 in a burst."""
    part = cycle(side, times)[0] / STRIDE_S
    total = np.zeros_like(times)
    for centre, width, strength in MUSCLES[muscle]:
        distance = (part - centre + 0.5) % 1.0 - 0.5
        total += strength * np.exp(-0.5 * (distance / width) ** 2)
    return total
