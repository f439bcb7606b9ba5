"""The force platforms of a trial."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING, overload

from _moxPY import trial as calls

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

    def __repr__(self) -> str:
        types = ", ".join(str(plate.type) for plate in self)
        return f"<platforms ({len(self)}): {f'types {types}' if types else 'none'}>"
