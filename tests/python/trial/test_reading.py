"""Every kind of source, everything that can be wrong with one, and what was odd."""

from __future__ import annotations

import array
import gzip
import io
import mmap
import os
import re
import sys
import warnings
import zipfile
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import Analog, C3DFile, c3d_bytes
from support.leaks import assert_nothing_lost
from support.memory import address_space
from support.read_c3d import track
from support.store_tree import snapshot
from support.systems import NO_FOLDER, make_link
from writing.people import ALICE, Person

FRAMES = 6
POINTS = {"LASI": track(FRAMES), "RASI": track(FRAMES, 50)}
CONTENT = c3d_bytes(POINTS)
CUT = CONTENT[: C3DFile(POINTS).layout().data_offset + 4 * C3DFile(POINTS).layout().frame_bytes]
CUT_WARNING = "POINT:FRAMES says 6 frames, the file holds 4; these are read"


@pytest.fixture
def path(tmp_path: Path) -> Path:
    """A good file."""
    path = tmp_path / "walk.c3d"
    path.write_bytes(CONTENT)
    return path


@pytest.fixture
def cut(tmp_path: Path) -> Path:
    """A file of 6 frames, cut behind the fourth one."""
    path = tmp_path / "cut.c3d"
    path.write_bytes(CUT)
    return path


class FsPath:
    """An os.PathLike of a str or of bytes."""

    def __init__(self, path: Any) -> None:
        self._path = path

    def __fspath__(self) -> Any:
        return self._path


def mapped(path: Path) -> Any:
    with path.open("rb") as file:
        return mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)


def in_an_archive(path: Path) -> Any:
    """A file object that can neither seek nor lend its bytes."""
    archive = path.with_suffix(".gz")
    archive.write_bytes(gzip.compress(path.read_bytes()))
    return gzip.open(archive)


PATHS: dict[str, Callable[[Path], Any]] = {
    "str": str,
    "Path": Path,
    "PathLike of str": lambda path: FsPath(str(path)),
    "PathLike of bytes": lambda path: FsPath(os.fsencode(path)),
}
CONTENTS: dict[str, Callable[[Path], Any]] = {
    "bytes": Path.read_bytes,
    "bytearray": lambda path: bytearray(path.read_bytes()),
    "memoryview": lambda path: memoryview(path.read_bytes()),
    "array of words": lambda path: array.array("h", path.read_bytes()),
    "NumPy array": lambda path: np.frombuffer(path.read_bytes(), np.uint8).reshape(-1, 2),
    "mmap": mapped,
    "open file": lambda path: path.open("rb"),
    "unbuffered file": lambda path: path.open("rb", buffering=0),
    "BytesIO": lambda path: io.BytesIO(path.read_bytes()),
    "member of an archive": in_an_archive,
}


@pytest.mark.parametrize("source", PATHS.values(), ids=PATHS)
def test_a_path_is_read(path: Path, source: Callable[[Path], Any]):
    trial = mox.read(source(path))
    assert snapshot(trial) == snapshot(_moxPY.moxReadAcquisition(str(path)))
    assert trial.path == path


@pytest.mark.parametrize("source", CONTENTS.values(), ids=CONTENTS)
def test_a_content_is_read(path: Path, source: Callable[[Path], Any]):
    opened = source(path)
    trial = mox.read(opened)
    assert trial.path is None
    assert trial.markers.labels == [*POINTS]
    np.testing.assert_array_equal(trial.markers["RASI"].values, POINTS["RASI"])
    getattr(opened, "close", bool)()


def test_a_view_with_steps_is_read():
    doubled = np.repeat(np.frombuffer(CONTENT, np.uint8), 2)
    assert mox.read(memoryview(doubled)[::2]).markers.labels == [*POINTS]


def test_a_file_object_is_read_from_where_it_is():
    file = io.BytesIO(b"something before" + CONTENT)
    file.seek(len(b"something before"))
    assert mox.read(file).frames == FRAMES
    assert file.read() == b""


def test_bytes_that_change_after_the_reading_do_not_show(path: Path):
    content = bytearray(CONTENT)
    trial = mox.read(content)
    content[:] = bytes(len(content))
    np.testing.assert_array_equal(trial.markers["RASI"].values, POINTS["RASI"])


def test_a_trial_is_a_context_manager(path: Path):
    with mox.read(path) as trial:
        values = trial.markers["LASI"].values
    assert trial.closed
    np.testing.assert_array_equal(values, POINTS["LASI"])
    with pytest.raises(ValueError, match=r"^the trial was closed$"):
        _ = trial.markers.labels


def test_the_path_is_absolute_and_keeps_links(
    path: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    make_link(tmp_path / "link.c3d", path)
    monkeypatch.chdir(tmp_path)
    assert mox.read("walk.c3d").path == tmp_path / "walk.c3d"
    assert mox.read("link.c3d").path == tmp_path / "link.c3d"


def test_what_a_function_read_has_its_path(path: Path):
    assert mox.Trial.of(_moxPY.moxReadAcquisition(str(path))).path == path


@pytest.mark.skipif(sys.platform != "linux", reason="file names of any bytes")
def test_a_name_that_is_no_text_survives(tmp_path: Path):
    name = os.fsdecode(os.fsencode(tmp_path) + b"/caf\xe9.c3d")
    Path(name).write_bytes(CUT)
    with pytest.warns(mox.TrialWarning) as told:
        trial = mox.read(name)
    assert str(trial.path) == name
    assert str(told[0].message) == f"'{name}': {CUT_WARNING}"


def test_a_new_trial_has_no_path_and_no_warnings():
    trial = mox.Trial.new()
    assert (trial.path, trial.warnings) == (None, [])


# What was odd.


def test_a_good_file_is_read_without_a_warning(path: Path):
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        assert mox.read(path).warnings == []


def test_a_cut_file_gives_its_whole_frames_and_a_warning(cut: Path):
    with pytest.warns(mox.TrialWarning) as told:
        trial = mox.read(cut)
    assert trial.frames == 4
    np.testing.assert_array_equal(trial.markers["RASI"].values, POINTS["RASI"][:4])
    assert trial.warnings == [CUT_WARNING]
    assert [str(warning.message) for warning in told] == [f"'{cut}': {CUT_WARNING}"]
    assert told[0].filename == __file__


def test_what_is_odd_can_be_ignored(cut: Path):
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        assert mox.read(cut, odd="ignore").warnings == [CUT_WARNING]


def test_what_is_odd_can_be_an_error(cut: Path):
    with pytest.raises(mox.TrialWarning) as raised:
        mox.read(cut, odd="raise")
    assert str(raised.value) == f"'{cut}': {CUT_WARNING}"
    assert isinstance(raised.value, UserWarning)


def test_bytes_and_files_have_names_in_warnings(cut: Path):
    with pytest.raises(mox.TrialWarning, match=r"^'<bytes>': POINT:FRAMES"):
        mox.read(CUT, odd="raise")
    with pytest.raises(mox.TrialWarning, match=r"^'<file>': POINT:FRAMES"):
        mox.read(io.BytesIO(CUT), odd="raise")
    with cut.open("rb") as file, pytest.raises(mox.TrialWarning) as raised:
        mox.read(file, odd="raise")
    assert str(raised.value) == f"'{cut}': {CUT_WARNING}"


@pytest.mark.parametrize("odd", ["Warn", "", "error", None, 1])
def test_other_ways_to_tell_are_refused(path: Path, odd: Any):
    with pytest.raises(ValueError, match=r"^odd is 'warn', 'ignore' or 'raise', not "):
        mox.read(path, odd=odd)


def test_warnings_go_with_the_acquisition(cut: Path):
    acquisition = _moxPY.moxReadAcquisition(str(cut))
    trial = mox.Trial.of(acquisition)
    assert trial.warnings == [CUT_WARNING]
    assert trial.copy().warnings == [CUT_WARNING]
    assert trial.copy().path == cut


def test_warnings_and_path_are_not_listed_and_not_written(cut: Path, tmp_path: Path):
    trial = mox.read(cut, odd="ignore")
    assert CUT_WARNING not in repr(_moxPY.moxGetMetaData(trial))
    assert "SourcePath" not in repr(_moxPY.moxGetMetaData(trial))
    _moxPY.moxWriteAcquisition(trial, str(tmp_path / "new.c3d"))
    assert b"cut.c3d" not in (tmp_path / "new.c3d").read_bytes()
    assert mox.read(tmp_path / "new.c3d", odd="raise").frames == 4


def test_many_oddities_are_told_together(tmp_path: Path):
    analog = Analog("Fz", np.arange(FRAMES), scale=0.0)
    path = tmp_path / "odd.c3d"
    file = C3DFile(POINTS, analogs=[analog])
    layout = file.layout()
    path.write_bytes(file.to_bytes()[: layout.data_offset + 4 * layout.frame_bytes])
    trial = mox.read(path, odd="ignore")
    assert len(trial.warnings) > 1
    with pytest.raises(mox.TrialWarning) as raised:
        mox.read(path, odd="raise")
    assert str(raised.value).splitlines() == [f"'{path}': {text}" for text in trial.warnings]


# What cannot be read.


@pytest.mark.parametrize("kind", [str, Path])
def test_a_missing_file_is_named(tmp_path: Path, kind: Any):
    path = tmp_path / "missing.c3d"
    with pytest.raises(FileNotFoundError) as raised:
        mox.read(kind(path))
    assert raised.value.filename == str(path)
    assert raised.value.strerror == os.strerror(raised.value.errno)
    assert str(raised.value) == f"[Errno 2] No such file or directory: {str(path)!r}"


def test_a_folder_is_no_file(tmp_path: Path):
    with pytest.raises(IsADirectoryError) as raised:
        mox.read(tmp_path)
    assert raised.value.filename == str(tmp_path)


def test_a_file_in_the_way_is_no_folder(path: Path):
    with pytest.raises(NO_FOLDER):
        mox.read(path / "walk.c3d")


@pytest.mark.skipif(os.name != "posix", reason="rights of another kind")
def test_a_file_of_others_is_refused(path: Path):
    path.chmod(0)
    # The superuser may read all.
    person = ALICE if os.getuid() == 0 else Person(os.getuid(), ())
    with person.acts(), pytest.raises(PermissionError) as raised:
        mox.read(path)
    assert raised.value.filename == str(path)


@pytest.mark.skipif(not hasattr(os, "mkfifo"), reason="no pipes with names")
def test_a_pipe_is_refused_without_waiting(tmp_path: Path):
    os.mkfifo(tmp_path / "pipe")
    with pytest.raises(OSError, match="Invalid argument"):
        mox.read(tmp_path / "pipe")


def test_a_name_with_nul_is_refused():
    with pytest.raises(ValueError, match="null"):
        mox.read("walk\0.c3d")


def zipped() -> bytes:
    file = io.BytesIO()
    with zipfile.ZipFile(file, "w") as archive:
        archive.writestr("walk.c3d", CONTENT)
    return file.getvalue()


MATLAB = b"MATLAB 5.0 MAT-file, Platform: GLNXA64".ljust(124) + b"\x00\x01IM"
FOREIGN = {
    b"": "it is empty",
    b"time,x,y\n0,1,2\n": "it looks like text",
    "Zeit;Höhe\r\n".encode(): "it looks like text",
    "time\t".encode("utf-16"): "it looks like text",
    ("ä" * 4096).encode()[1:]: "its second byte is 0xc3, not 0x50",
    ("a" + "ä" * 4096).encode(): "it looks like text",
    b'{"marker": [1, 2]}': "it looks like text",
    zipped(): "it looks like a ZIP archive, as spreadsheets and documents are",
    gzip.compress(CONTENT): "it looks like a gzip archive",
    MATLAB: "it looks like a MATLAB file",
    b"\x89HDF\r\n\x1a\n" + bytes(40): "it looks like an HDF5 file",
    b"%PDF-1.7\n%\xe2\xe3": "it looks like a PDF document",
    bytes(1024): "its first 1024 bytes are all zero",
    b"\x02": "it has one byte",
    b"\x02\x51" + bytes(600): "its second byte is 0x51, not 0x50",
}


@pytest.mark.parametrize(("content", "text"), FOREIGN.items(), ids=FOREIGN.values())
def test_a_file_of_another_kind_is_told_what_it_looks_like(
    tmp_path: Path, content: bytes, text: str
):
    path = tmp_path / "walk.c3d"
    path.write_bytes(content)
    for source, name in [(path, str(path)), (content, "<bytes>"), (io.BytesIO(content), "<file>")]:
        with pytest.raises(ValueError) as raised:  # noqa: PT011 -- the whole text is compared
            mox.read(source)
        assert str(raised.value) == f"'{name}': not a C3D file: {text}"


def test_a_damaged_file_is_told_where(tmp_path: Path):
    path = tmp_path / "walk.c3d"
    path.write_bytes(CONTENT[:600])
    with pytest.raises(ValueError, match=rf"^'{re.escape(str(path))}': byte \d+: ") as raised:
        mox.read(path)
    with pytest.raises(RuntimeError) as same:
        _moxPY.moxReadAcquisition(str(path))
    assert str(raised.value) == str(same.value)


@pytest.mark.parametrize("source", [None, 3, 2.5, [], object()])
def test_what_is_no_source_is_refused(source: Any):
    with pytest.raises(
        TypeError, match=r"^a trial is read from a path, from bytes or from a binary"
    ):
        mox.read(source)


def test_a_text_file_object_is_refused(path: Path):
    with (
        path.open(encoding="latin-1") as file,
        pytest.raises(TypeError, match="this one gives text"),
    ):
        mox.read(file)


def test_a_file_object_that_fails_raises_its_own_error():
    class Broken:
        def read(self) -> bytes:
            raise OSError("the disk is gone")

    with pytest.raises(OSError, match=r"^the disk is gone$"):
        mox.read(Broken())


# What it costs.


def test_a_path_takes_one_call(path: Path, monkeypatch: pytest.MonkeyPatch):
    def no_system_call(*_: Any, **__: Any) -> Any:
        raise AssertionError("the path was looked at twice")

    for name in ("stat", "open", "lstat", "access"):
        monkeypatch.setattr(os, name, no_system_call)
    assert mox.read(path).frames == FRAMES


def refused(source: Any) -> None:
    with pytest.raises((ValueError, OSError)):
        mox.read(source)


def test_reading_loses_no_memory(path: Path, cut: Path, tmp_path: Path):
    (tmp_path / "text.c3d").write_bytes(b"text")
    missing, text, damaged = tmp_path / "missing.c3d", tmp_path / "text.c3d", CONTENT[:600]
    assert_nothing_lost(lambda: mox.read(path))
    assert_nothing_lost(lambda: mox.read(CONTENT), CONTENT)
    assert_nothing_lost(lambda: mox.read(cut, odd="ignore").warnings)
    for source in (missing, text, damaged, tmp_path):
        assert_nothing_lost(lambda source=source: refused(source))


def test_closing_frees_the_samples():
    """Ten trials of 63 MB, of which there is memory for two."""
    closed = []
    with address_space(128 << 20):
        for _ in range(10):
            trial = mox.Trial.of(_moxPY.moxNewAcquisition(8, 330_000))
            trial.close()
            closed.append(trial)
    assert all(trial.closed for trial in closed)
