"""Trials of any content, for tests of what holds of all."""

from __future__ import annotations

import moxPY
import numpy as np
from hypothesis import strategies as st
from hypothesis.extra.numpy import arrays

SINGLES = st.floats(-1e6, 1e6, width=32)
LABELS = st.lists(
    st.text("ABCDEFGHIJ:_*0123456789", min_size=1, max_size=8), max_size=3, unique=True
)


@st.composite
def trials(draw: st.DrawFn) -> moxPY.Trial:
    """Some frames, markers with gaps, analog channels and events, as files hold them."""
    frames, ratio = draw(st.integers(1, 12)), draw(st.integers(1, 4))
    trial = moxPY.Trial.new(frames, draw(st.sampled_from([50.0, 100.0, 240.0])), ratio)
    for label in draw(LABELS):
        values = draw(arrays(np.float64, (frames, 3), elements=SINGLES))
        values[draw(arrays(np.bool_, frames))] = np.nan
        trial.markers[label] = values
    for label in draw(LABELS):
        trial.analogs[label] = draw(arrays(np.float64, frames * ratio, elements=SINGLES))
    for time in draw(st.lists(st.floats(0, 100, width=32), max_size=3)):
        context = draw(st.sampled_from(["Left", "Right", "General"]))
        trial.events.add("Foot Strike", time, context)
    trial.first_frame = draw(st.integers(1, 500))
    return trial
