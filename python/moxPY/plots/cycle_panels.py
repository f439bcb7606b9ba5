"""Which panels a grid over the gait cycle has, and what they are called."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray

from ..sides import SIDES, Side, sided
from ..trial.channel import Channel
from ..trial.channels import Channels
from .channel import AXES

# What the components of the conventional gait model's angles are called, x to z.
_COMPONENTS = {
    "Pelvis": ("tilt", "obliquity", "rotation"),
    "Hip": ("flexion", "adduction", "rotation"),
    "Knee": ("flexion", "varus", "rotation"),
    "Ankle": ("dorsiflexion", "inversion", "rotation"),
}

# How a report goes through the body, by the beginnings of labels behind the side.
_DOWNWARDS = ("Pelvis", "Hip", "Knee", "Ankle", "Foot")


class Panel(NamedTuple):
    """One component of a joint, of both sides."""

    title: str
    names: tuple[str, ...]  #: labels that a reference may have, the most special one first
    unit: str
    component: int
    channels: list[tuple[Side, Channel]]


class _Joint(NamedTuple):
    name: str  #: without the side
    labels: list[str]
    channels: list[tuple[Side, Channel]]
    used: list[bool]  #: which components have any value but 0


def from_pelvis_to_foot(channels: Channels) -> list[str]:
    """The labels of channels from the pelvis down to the foot; others follow as they stand."""
    return sorted(channels.labels, key=_level)


def _level(label: str) -> int:
    parts = sided(label)
    place = parts.place if parts else label.rpartition(":")[2]
    found = [level for level, name in enumerate(_DOWNWARDS) if place.startswith(name)]
    return found[0] if found else len(_DOWNWARDS)


def panels_of(
    channels: Channels, labels: Iterable[str], others: Sequence[Channels] = ()
) -> NDArray[np.object_]:
    """A panel a joint and component, None where a component has no values, neither here nor in the
    channels of other trials, which have the same labels.

    A channel of neither side is shown over the cycles of both. Components that no joint has, as
    those of powers, are left out.

    Returns
    -------
    ndarray
        Shape (joints, components); (1, joints) for a single component.

    Raises
    ------
    KeyError
        There is no channel of a label.
    """
    joints = _joints(channels, labels, others)
    used = [index for index in range(3) if any(joint.used[index] for joint in joints)] or [0, 1, 2]
    panels = np.full((len(joints), len(used)), None, dtype=object)
    for row, joint in enumerate(joints):
        for column, component in enumerate(used):
            if joint.used[component] or not any(joint.used):
                panels[row, column] = _panel(joint, component, is_single=len(used) == 1)
    return panels.T if len(used) == 1 else panels


def _joints(channels: Channels, labels: Iterable[str], others: Sequence[Channels]) -> list[_Joint]:
    """The joints in the order of the labels, each with its sides."""
    grouped: dict[str, dict[str, Side | None]] = {}
    for label in labels:
        parts = sided(label)
        # A beginning such as "L" is a side where the other one is there, or the rest is known.
        is_sided = parts and (parts.other in channels or _known(parts.place))
        name = f"{parts.subject}{parts.place}" if parts and is_sided else label
        grouped.setdefault(name, {})[label] = parts.side if parts and is_sided else None
    subjects = {name.rpartition(":")[0] for name in grouped}
    joints = []
    for name, own in grouped.items():
        found = [(each, channels[label]) for label, side in own.items() for each in _sides(side)]
        values = [each[label].values for each in (channels, *others) for label in own]
        used = [any(np.nan_to_num(each[:, index]).any() for each in values) for index in range(3)]
        shown = name.rpartition(":")[2] if len(subjects) == 1 else name
        joints.append(_Joint(shown.strip(" _."), list(own), found, used))
    return joints


def _sides(side: Side | None) -> tuple[Side, ...]:
    return SIDES if side is None else (side,)


def _known(place: str) -> str | None:
    """The joint of a label such as "KneeAngles"."""
    joint = place.removesuffix("Angles")
    return joint if joint != place and joint in _COMPONENTS else None


def _panel(joint: _Joint, component: int, *, is_single: bool) -> Panel:
    known = _known(joint.name.rpartition(":")[2])
    if known:
        title = f"{known} {_COMPONENTS[known][component]}"
    else:
        title = joint.name if is_single else f"{joint.name} {AXES[component]}"
    names = (*joint.labels, *(label.rpartition(":")[2] for label in joint.labels), joint.name)
    units = {channel.unit for _, channel in joint.channels}
    return Panel(title, names, " / ".join(sorted(units)), component, joint.channels)
