"""Users and groups for tests of what they may do with files: numbers that nobody has registered."""

from __future__ import annotations

import os
import re
import shutil
import struct
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from tempfile import NamedTemporaryFile, mkdtemp
from typing import Any

import pytest

LABORATORY, OTHER_GROUP = 54201, 54202


@dataclass(frozen=True)
class Person:
    """The first of the groups is the one that new files get."""

    user: int
    groups: tuple[int, ...]

    @contextmanager
    def acts(self) -> Iterator[None]:
        """Meanwhile this process has the rights of the person, and none of the superuser."""
        if self.user == os.getuid():
            yield
            return
        groups = os.getgroups()
        try:
            os.setgroups(self.groups)
            os.setegid(self.groups[0])
            os.seteuid(self.user)
            yield
        finally:
            os.seteuid(os.getuid())
            os.setegid(os.getgid())
            os.setgroups(groups)

    def may(self, path: Path) -> str:
        """What the system lets the person do with a file: "r", "w", "rw" or ""."""
        rights = ""
        with self.acts():
            for letter, flags in (("r", os.O_RDONLY), ("w", os.O_WRONLY)):
                try:
                    os.close(os.open(path, flags))
                    rights += letter
                except PermissionError:
                    pass
        return rights


ALICE = Person(54101, (54101, LABORATORY))
BOB = Person(54102, (54102, LABORATORY))
CAROL = Person(54103, (54103, LABORATORY))
STRANGER = Person(54104, (54104, OTHER_GROUP))
ROOT = Person(0, (0,))
# Windows has no numbers for people; nobody is anybody else there.
MYSELF = (
    Person(os.getuid(), (os.getgid(), *os.getgroups())) if os.name == "posix" else Person(-1, ())
)


def may_act_as_others() -> bool:
    """False also for the superuser of a container that knows no other users."""
    if os.name != "posix":
        return False
    try:
        with NamedTemporaryFile() as file:
            os.chown(file.name, STRANGER.user, OTHER_GROUP)
            with STRANGER.acts():
                return os.geteuid() == STRANGER.user
    except OSError:
        return False


ACTS_AS_OTHERS = may_act_as_others()
# Alice where the tests may act as her, else whoever runs them.
OWNER = ALICE if ACTS_AS_OTHERS else MYSELF

needs_root = pytest.mark.skipif(not ACTS_AS_OTHERS, reason="only root can act as several users")


def access_list(text: str) -> bytes:
    """The list as the system takes it, from "u::rw u:54102:r g::- m::rw o::-"."""
    tags = {"u": (0x01, 0x02), "g": (0x04, 0x08), "m": (0x10,), "o": (0x20,)}
    content = struct.pack("<I", 2)
    for letter, number, rights in re.findall(r"([ugmo]):(\d*):([rwx]*)", text):
        bits = sum(4 >> "rwx".index(right) for right in rights)
        tag = tags[letter][bool(number)]
        content += struct.pack("<HHI", tag, bits, int(number or 0xFFFFFFFF))
    return content


def set_attribute(path: Path, name: str, value: bytes) -> None:
    try:
        os.setxattr(path, name, value)
    except OSError as refused:
        pytest.skip(f"{path.parent} takes no {name}: {refused.strerror}")


def set_access_list(path: Path, text: str) -> None:
    set_attribute(path, "system.posix_acl_access", access_list(text))


def set_list_for_new_files(folder: Path, text: str) -> None:
    set_attribute(folder, "system.posix_acl_default", access_list(text))


def attributes_of(path: Path) -> dict[str, bytes]:
    """All extended attributes, of which an access list is one."""
    return {name: os.getxattr(path, name) for name in os.listxattr(path)}


def state_of(path: Path) -> dict[str, Any]:
    """Which file it is, and all that its successor would take over."""
    about = path.stat()
    names = ("st_ino", "st_mode", "st_uid", "st_gid", "st_mtime_ns")
    return attributes_of(path) | {name: getattr(about, name) for name in names}


def laboratory_folder() -> Iterator[Path]:
    """A folder that the laboratory writes to; unlike those of pytest others may enter it."""
    path = Path(mkdtemp(prefix="moxpy_people_"))
    if ACTS_AS_OTHERS:
        os.chown(path, 0, LABORATORY)
    path.chmod(0o775)
    try:
        with OWNER.acts():
            if not os.access(path, os.W_OK, effective_ids=True):
                pytest.skip(f"{path.parent} is closed to other users")
        yield path
    finally:
        shutil.rmtree(path)


def old_file(
    folder: Path,
    owner: Person,
    group: int | None = None,
    mode: int = 0o664,
    content: bytes = b"old",
) -> Path:
    path = folder / "trial.c3d"
    path.write_bytes(content)
    if ACTS_AS_OTHERS:
        os.chown(path, owner.user, owner.groups[0] if group is None else group)
    path.chmod(mode)
    return path
