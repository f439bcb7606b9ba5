"""Calls a function on an acquisition and on its model, and compares all that can be read."""

from __future__ import annotations

import io
import pickle
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from hypothesis.stateful import RuleBasedStateMachine, invariant
from support.model.acquisition import Acquisition
from support.model.state import POINT_TYPES, Channel, ChannelGroup, Refused
from support.same_values import require_same

# Everything that reads an acquisition and takes nothing else.
GETTERS = sorted(
    name
    for name in dir(Acquisition)
    if name.startswith("moxGet") and name not in {"moxGetPoint", "moxGetAnalog", "moxGetPointsUnit"}
)


class EditingMachine(RuleBasedStateMachine):
    """An acquisition beside its model; subclasses say how both start."""

    def __init__(self) -> None:
        super().__init__()
        self.handle, self.model = self.start()

    def start(self) -> tuple[Any, Acquisition]:
        raise NotImplementedError

    def perform(self, name: str, *arguments: Any) -> None:
        """The call does what the model does, or is refused as the model refuses it."""
        try:
            expected = getattr(self.model, name)(*arguments)
        except Refused as refusal:
            self.require_refusal(refusal, name, *arguments)
        else:
            require_same(getattr(_moxPY, name)(self.handle, *arguments), expected, name)

    def require_refusal(self, refusal: Refused, name: str, *arguments: Any) -> None:
        """The call fails like this, and every byte of the acquisition is as before."""
        before = self._content()
        self._require_failure(refusal, name, *arguments)
        assert self._content() == before, f"{name} was refused and changed something"

    def _read(self, name: str, *arguments: Any) -> None:
        try:
            expected = getattr(self.model, name)(*arguments)
        except Refused as refusal:
            self._require_failure(refusal, name, *arguments)
        else:
            require_same(getattr(_moxPY, name)(self.handle, *arguments), expected, name)

    def _require_failure(self, refusal: Refused, name: str, *arguments: Any) -> None:
        with pytest.raises(refusal.kind) as failure:
            getattr(_moxPY, name)(self.handle, *arguments)
        assert refusal.kind in (failure.type, Exception), f"{name}: {failure.value!r}"
        text = str(failure.value)
        if refusal.text is not None:
            require_same(text, refusal.text, name)
        assert all(mentioned in text for mentioned in refusal.names), text

    def _content(self) -> bytes:
        """All that the store holds, hidden attributes included; NaN by its bytes."""
        content = io.BytesIO()
        pickler = pickle.Pickler(content)
        pickler.fast = True  # equal content gives equal bytes, whichever objects are shared
        pickler.dump(probe.tree(self.handle))
        return content.getvalue()

    @invariant()
    def every_getter_agrees(self) -> None:
        for name in GETTERS:
            self._read(name)

    @invariant()
    def every_channel_is_found(self) -> None:
        for find, channels in (
            ("moxGetPoint", self.model.points),
            ("moxGetAnalog", list(self.model.analogs.channels.values())),
        ):
            for index in range(-1, len(channels) + 1):
                self._read(find, index)
            for label in {channel.label for channel in channels}:
                self._read(find, label)
        for group in POINT_TYPES:
            self._read("moxGetPointsUnit", group)

    @invariant()
    def no_getter_sees_it_but_the_store_agrees(self) -> None:
        data = probe.tree(self.handle)["groups"]["Format"]["groups"]["Data"]["groups"]
        for name, group in {**self.model.point_groups, "AnalogsExport": self.model.analogs}.items():
            require_same(_group_attributes(data[name]), _expected_group(group), name)
            for channel in group.channels.values():
                stored = data[name]["sets"][channel.name]
                require_same(_channel_attributes(stored), _expected_channel(channel), channel.name)
                if "Residuals" in stored["attributes"]:
                    assert stored["attributes"]["Residuals"][1] == [group.samples]


def _single_values(node: dict[str, Any], *names: str) -> dict[str, Any]:
    """Attributes of one element, as Python values."""
    values = {name: np.ravel(node["attributes"][name][2]).tolist() for name in names}
    return {name: value for name, (value,) in values.items()}


def _group_attributes(group: dict[str, Any]) -> dict[str, Any]:
    return {
        **_single_values(group, "NumSamples", "SampleRate", "StartTime"),
        "sets": list(group["sets"]),
    }


def _expected_group(group: ChannelGroup) -> dict[str, Any]:
    return {
        "NumSamples": group.samples,
        "SampleRate": group.rate,
        "StartTime": group.start,
        "sets": list(group.channels),
    }


def _channel_attributes(channel: dict[str, Any]) -> dict[str, Any]:
    names = "RelativeSetIndex", "SampleRate", "StartTime", "MetricType"
    return {**_single_values(channel, *names), "shape": channel["shape"]}


def _expected_channel(channel: Channel) -> dict[str, Any]:
    samples, components = channel.values.shape
    return {
        "RelativeSetIndex": channel.index,
        "SampleRate": channel.rate,
        "StartTime": channel.start,
        "MetricType": channel.metric,
        "shape": [components, 1, samples],
    }
