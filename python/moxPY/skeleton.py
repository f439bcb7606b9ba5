"""Which markers a stick figure joins: the usual label sets, told by their labels alone."""

from __future__ import annotations

import re
from collections import defaultdict
from collections.abc import Iterable, Iterator
from itertools import combinations, pairwise
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from .trial import Trial

Stick = tuple[str, str]

# Place on the body -> how labels call it behind the side, in small letters without blanks, points,
# hyphens and underscores. Of several markers at one place the earliest name counts.
_SIDED = {
    "front head": ("fhd", "fhead"),
    "back head": ("bhd", "bhead"),
    "shoulder": ("sho", "shoulder", "acr", "acromion", "acromium", "ac", "sjc"),
    "elbow": ("elb", "elbow", "lelb", "elbowlat", "elblat", "hle", "ejc"),
    "inner elbow": ("elm", "melb", "elbmed", "elbowmed", "hme"),
    "wrist": ("wri", "wrist", "wjc"),
    "thumb side": ("wra", "wristrad", "wristthumb", "rsp"),
    "little finger side": ("wrb", "wristuln", "wristpinky", "usp"),
    "finger": ("fin", "finger", "hand"),
    "front pelvis": ("asi", "asis", "ias"),
    "back pelvis": ("psi", "psis", "ips"),
    "hip": ("hip", "hjc", "hipjc"),
    "trochanter": ("tro", "troc", "trc", "gtr", "gt", "ftc", "trochanter"),
    "knee": ("kne", "knee", "kneelat", "lkn", "lkne", "fle", "lfe", "lfc", "le", "lk", "kjc"),
    "inner knee": ("kneemed", "knm", "mkn", "mkne", "fme", "mfe", "mfc", "me", "mk"),
    "ankle": ("ank", "ankle", "anklelat", "lma", "lmal", "mall", "fal", "lm", "ajc"),
    "inner ankle": ("anklemed", "anm", "mank", "mma", "mmal", "tam", "mm"),
    "heel": ("hee", "heel", "fcc", "calc", "cal", "ca", "calcaneus"),
    "toe": ("toe", "to", "mt2", "met2", "fm2", "toetip", "met", "bigtoe", "hallux"),
    "outer toe": ("mt5", "met5", "fm5", "mth5", "smalltoe"),
    "inner toe": ("mt1", "met1", "fm1", "mth1"),
}
_MIDDLE = {
    "top of head": ("thea", "headtop", "tophead", "head"),
    "front of head": ("fhea", "headfront", "fronthead", "forehead", "nose"),
    "rear of head": ("rhea", "headrear", "rearhead", "bhea"),
    "neck": ("c7", "cv7", "neck"),
    "back": ("t10", "tv10", "t8", "tv8", "t12"),
    "collar": ("clav", "clv", "ij", "sjn", "jn"),
    "breast": ("strn", "ster", "sternum", "px", "sxs", "xiph"),
    "sacrum": ("sacr", "sacrum", "vsac", "vsacral", "sac", "sacral", "pelr", "midhip"),
}
_SIDES = {"left": "left", "right": "right", "l": "left", "r": "right"}
_SEPARATORS = re.compile(r"[ _.-]+")

# The plates of three or four markers on segments: RTH1, RTH2, RTH3.
_NUMBERED = re.compile(r"(?P<stem>[LRlr].*[^\d])(?P<number>[1-4])")


def sticks_of(trial: Trial) -> list[Stick]:
    """The sticks of a trial's markers; see `sticks_between`.

    Examples
    --------
    >>> sticks_of(trial)[:2]
    [('LASI', 'RASI'), ('LPSI', 'RPSI')]
    """
    return sticks_between(trial.markers.labels)


def sticks_between(labels: Iterable[str]) -> list[Stick]:
    """Which markers a stick figure joins, of each subject by itself.

    Labels are understood with a subject before them (``Anna:LASI``), with the side as a letter or
    a word, before or behind (``L.Knee``, ``RightAnkle``, ``heel_l``), in capitals or not. A place
    that has no marker is passed over: without a knee the hip is joined with the ankle. Markers that
    stand off the body, such as those of the thighs and the shanks, are joined with nothing. Where
    the legs carry plates of three or four numbered markers, those of a plate are all joined.

    Parameters
    ----------
    labels : iterable of str
        The keys of `Trial.markers`.

    Returns
    -------
    list of (str, str)
        Each pair once; an empty list where no label is known.
    """
    subjects: dict[str, list[str]] = defaultdict(list)
    for label in labels:
        subject, colon, _ = label.rpartition(":")
        subjects[subject + colon].append(label)
    sticks: dict[frozenset[str], Stick] = {}
    for subject, own in subjects.items():
        places = _places(subject, own)
        for stick in (*places.sticks(), *_plates(own, subject, set(places.values()))):
            sticks.setdefault(frozenset(stick), stick)
    return [stick for stick in sticks.values() if stick[0] != stick[1]]


def _places(subject: str, labels: Iterable[str]) -> _Body:
    """The label at each place on a body: "left knee" -> "Anna:LKNE"."""
    found: dict[str, tuple[int, str]] = {}
    names = {label: _SEPARATORS.sub(" ", label[len(subject) :].strip().lower()) for label in labels}
    known = set(names.values())
    for label, name in names.items():
        for place, rank in _meanings(name, known):
            if place not in found or rank < found[place][0]:
                found[place] = rank, label
    return _Body({place: label for place, (_, label) in found.items()})


def _meanings(name: str, known: set[str]) -> Iterator[tuple[str, int]]:
    """The place that a label means, and how far behind the name stands among those of the place."""
    joined = name.replace(" ", "")
    is_one_of_two = joined[:1] == "r" and f"l{joined[1:]}" in known  # RHEA beside LHEA
    for place, names in _MIDDLE.items():
        if joined in names and not is_one_of_two:
            yield place, names.index(joined)
            return
    for side, rest in _sides(name):
        for place, names in _SIDED.items():
            if rest in names:
                yield f"{side} {place}", names.index(rest)
                return


def _sides(name: str) -> Iterator[tuple[str, str]]:
    """How a label may be taken apart into a side and a place."""
    joined = name.replace(" ", "")
    for word, side in _SIDES.items():
        if joined.startswith(word):
            yield side, joined.removeprefix(word)
        if name.endswith(f" {word}"):
            yield side, name.removesuffix(f" {word}").replace(" ", "")


class _Body(dict[str, str]):
    """The labels of one subject by their places."""

    def sticks(self) -> Iterator[Stick]:
        hips = [
            self._first(f"{side} hip", f"{side} trochanter", f"{side} front pelvis")
            for side in ("left", "right")
        ]
        yield from self._pelvis(*hips)
        yield from self._head()
        yield from self._trunk(*hips)
        for side, hip in zip(("left", "right"), hips, strict=True):
            yield from self._arm(side)
            yield from self._leg(side, hip)

    def _first(self, *places: str) -> str:
        """The first place that has a marker, or the last one."""
        return next((place for place in places if place in self), places[-1])

    def _chain(self, *places: str) -> Iterator[Stick]:
        """From marker to marker, those that are missing passed over."""
        yield from pairwise(self[place] for place in places if place in self)

    def _star(self, middle: str, *places: str) -> Iterator[Stick]:
        for place in places:
            if middle in self:
                yield from self._chain(middle, place)

    def _pelvis(self, left_hip: str, right_hip: str) -> Iterator[Stick]:
        yield from self._chain("left front pelvis", "right front pelvis")
        yield from self._chain("left back pelvis", "right back pelvis")
        for side in ("left", "right"):
            back = self._first(f"{side} back pelvis", "sacrum")
            yield from self._chain(f"{side} front pelvis", back)
        yield from self._star("sacrum", "left back pelvis", "right back pelvis")
        if "front pelvis" not in left_hip + right_hip:
            yield from self._chain(left_hip, "sacrum", right_hip)
            yield from self._chain(left_hip, right_hip)

    def _head(self) -> Iterator[Stick]:
        ring = ("left front head", "right front head", "right back head", "left back head")
        yield from self._chain(*ring, ring[0])
        yield from self._chain("front of head", "top of head", "rear of head", "front of head")
        yield from self._star("neck", "left back head", "right back head", "rear of head")
        if "rear of head" not in self:
            yield from self._chain("neck", "top of head")

    def _trunk(self, left_hip: str, right_hip: str) -> Iterator[Stick]:
        girdle = [place for place in ("collar", "neck") if place in self]
        for middle in girdle or ["no middle"]:
            yield from self._chain("left shoulder", middle, "right shoulder")
        yield from self._chain("back", "neck", "collar", "breast", "back")
        spine = self._first("back", "neck", "collar")
        if spine in self:
            pelvis = {"left back pelvis", "right back pelvis"} & self.keys() or {"sacrum"}
            yield from self._star(spine, *sorted(pelvis))
        else:
            yield from self._chain("left shoulder", left_hip)
            yield from self._chain("right shoulder", right_hip)

    def _arm(self, side: str) -> Iterator[Stick]:
        elbow = self._first(f"{side} elbow", f"{side} inner elbow")
        yield from self._chain(f"{side} shoulder", elbow, f"{side} inner elbow")
        ends = [f"{side} thumb side", f"{side} little finger side"]
        ends = [end for end in ends if end in self]
        for wrist in ends or [f"{side} wrist"]:
            yield from self._chain(elbow, wrist, f"{side} finger")
        yield from self._chain(*ends)

    def _leg(self, side: str, hip: str) -> Iterator[Stick]:
        knee = self._first(f"{side} knee", f"{side} inner knee")
        ankle = self._first(f"{side} ankle", f"{side} inner ankle")
        yield from self._chain(hip, knee, ankle)
        yield from self._star(knee, f"{side} inner knee")
        yield from self._star(ankle, f"{side} inner ankle", f"{side} heel")
        toes = [f"{side} {toe}" for toe in ("toe", "inner toe", "outer toe")]
        toes = [toe for toe in toes if toe in self]
        yield from self._star(f"{side} heel", *toes)
        for toe in toes[:1]:
            yield from self._star(ankle, toe)
            yield from self._star(toe, *toes[1:])


def _plates(labels: Iterable[str], subject: str, known: set[str]) -> Iterator[Stick]:
    """Between all numbered markers of a plate, where both sides of the body carry some."""
    plates: dict[str, list[str]] = defaultdict(list)
    for label in labels:
        match = _NUMBERED.fullmatch(label, len(subject))
        if match and label not in known:
            plates[match["stem"]].append(label)
    for stem, members in plates.items():
        other = {"L": "R", "R": "L", "l": "r", "r": "l"}[stem[0]] + stem[1:]
        if len(members) >= 3 and len(plates.get(other, ())) >= 3:
            yield from combinations(members, 2)
