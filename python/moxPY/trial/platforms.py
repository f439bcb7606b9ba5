"""The force platforms of a trial."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING, overload

from _moxPY import trial as calls

from .display import one_line
from .events import Event
from .foot_contacts import detect_events
from .platform import Platform

if TYPE_CHECKING:
    from .trial import Trial


class Platforms(Sequence[Platform]):
    """The force platforms in the trial's order; none without such parameters.

    Examples
    --------
    >>> plate = trial.platforms[0]
    >>> reaction = plate.reaction()
    >>> float(reaction.force[reaction.contact, 2].max().round(1)), reaction.units.force
    (755.2, 'N')
    """

    __slots__ = ("_trial",)

    def __init__(self, trial: Trial) -> None:
        self._trial = trial

    def __len__(self) -> int:
        return calls.platform_count(self._trial)

    @overload
    def __getitem__(self, index: int) -> Platform: ...
    @overload
    def __getitem__(self, index: slice) -> list[Platform]: ...
    def __getitem__(self, index: int | slice) -> Platform | list[Platform]:
        numbers = range(len(self))
        if isinstance(index, slice):
            return [Platform(self._trial, number) for number in numbers[index]]
        try:
            return Platform(self._trial, numbers[index])
        except IndexError:
            raise IndexError(
                f"there is no force platform {index}: the trial has {len(numbers)}"
            ) from None

    def detect_events(self, threshold: float = 20.0, *, store: bool = False) -> list[Event]:
        """Foot strikes and foot offs: when the vertical ground reaction of a platform crosses a
        threshold.

        A foot strike is the first sample that reaches the threshold, a foot off the first one that
        is under it again. Between them the load may fall under the threshold for less than 0.05 s,
        or for longer as long as it stays over half of it: that is one contact. One that is shorter
        than 0.05 s is a blow and has no events; nor has the beginning or the end of the recording,
        in the middle of a contact. Each platform has events of its own, also where one foot came
        down on two.

        The side is that of the foot whose heel, toe or ankle marker ("LHEE", "RTOE", "Anna:LANK",
        "Left_Heel" …) is nearest to the point of application at that instant: to the mean of the
        0.05 s of contact beside it, by load. It is "General" where not both feet are seen.

        Parameters
        ----------
        threshold : float
            As for `Platform.reaction`.
        store : bool
            Whether the events are added to those of the trial.

        Returns
        -------
        list of Event
            In order of time. Labels are "Foot Strike" and "Foot Off", ids 1 and 2.

        Raises
        ------
        ValueError
            The threshold is negative or NaN.
        """
        found = detect_events(self._trial, threshold)
        if not store:
            return found
        events = self._trial.events
        return [events.add(e.label, e.time, context=e.context, id=e.id) for e in found]

    def __repr__(self) -> str:
        return one_line("platforms", self._described)

    def _described(self) -> str:
        types = ", ".join(str(plate.type) for plate in self)
        return f" ({len(self)}): {f'types {types}' if types else 'none'}"
