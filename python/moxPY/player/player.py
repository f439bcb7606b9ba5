"""The player of a trial: a page, and what can be done with it."""

from __future__ import annotations

import os
import tempfile
import webbrowser
from html import escape
from pathlib import Path

from ..formats.target import Target
from ..trial.writing import PathLike

# Of a notebook's cell.
_HEIGHT = "640px"

_SUFFIXES = (".html", ".htm")


class Player:
    """A trial as one page, as it was when the player was made.

    In a notebook it shows itself, and stays in the notebook that is saved.

    Attributes
    ----------
    html : str
        The page: everything is in it.
    title : str
        The name of the trial.
    """

    __slots__ = ("html", "title")

    def __init__(self, html: str, title: str) -> None:
        self.html = html
        self.title = title

    def write(self, path: PathLike) -> Path:
        """Write the page to a file, which replaces the one that is there once it is complete.

        Raises
        ------
        ValueError
            The file ends on neither ``.html`` nor ``.htm``: it may be the trial.
        OSError
            The system does not let the file be made.
        """
        place = Path(os.fsdecode(path))
        if place.suffix.lower() not in _SUFFIXES:
            raise ValueError(f"a page ends on .html or .htm, not '{place.suffix}'")
        with Target(place.parent, place.stem, place.suffix, replace=True) as target:
            target.path().write_text(self.html, "utf-8")
        return place

    def open(self) -> tuple[Path, bool]:
        """Show the page in the browser.

        Returns
        -------
        path : Path
            The temporary file that the browser shows; it stays, as long as the system keeps such.
        shown : bool
            Whether there is a browser.
        """
        folder = Path(tempfile.mkdtemp(prefix="moxpy-"))
        path = self.write(folder / f"{Path(self.title).stem}.html")
        return path, webbrowser.open(path.as_uri())

    def frame(self, height: str = _HEIGHT) -> str:
        """The page as an element of another page of HTML.

        Parameters
        ----------
        height : str
            As style sheets have it: ``"640px"``, ``"90vh"``.
        """
        style = f"width: 100%; height: {escape(height)}; border: 0"
        # The page is an attribute, so no page of the notebook and no file has to be found again.
        return (
            f'<iframe title="{escape(self.title)}" style="{style}" allow="fullscreen" '
            f'srcdoc="{escape(self.html)}"></iframe>'
        )

    def _repr_html_(self) -> str:
        return self.frame()

    def __repr__(self) -> str:
        return f"<player: {self.title}, {len(self.html.encode()) / 1e6:.2g} MB>"
