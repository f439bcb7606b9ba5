"""How Sphinx makes the site; `make docs` calls it on the folder that tools/pages lays out."""

from __future__ import annotations

import sys
from pathlib import Path
from typing import Any

PROJECT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(PROJECT / "tools"))

import moxPY  # noqa: E402
from pages.function_pages import prototypes  # noqa: E402

project = "moxPY"
copyright = "the moxPY developers"
version = release = moxPY.__version__

extensions = [
    "myst_parser",
    "sphinx.ext.autodoc",
    "sphinx.ext.autosummary",
    "numpydoc",
]
# Absolute, since the pages are not beside this file.
templates_path = [str(PROJECT / "docs" / "templates")]
root_doc = "index"
default_role = "py:obj"
highlight_language = "none"

myst_enable_extensions = ["deflist"]
myst_heading_anchors = 4

autosummary_generate = True
autodoc_member_order = "bysource"
# Annotations as they are written, so that "Acquisition" stays that word.
autodoc_typehints = "signature"
autodoc_type_aliases = {"FloatArray": "FloatArray", "PathLike": "PathLike"}
autodoc_preserve_defaults = True
numpydoc_show_class_members = False
numpydoc_class_members_toctree = False
toc_object_entries_show_parents = "hide"

html_theme = "pydata_sphinx_theme"
html_title = f"moxPY {version}"
html_static_path = ["static"]
html_css_files = ["site.css"]
# Beneath each result the search shows some text of the page, which one that was opened as a file
# may not read.
_QUIET = 'if (location.protocol === "file:") DOCUMENTATION_OPTIONS.SHOW_SEARCH_SUMMARY = false;'
html_js_files = [(None, {"body": _QUIET})]
html_copy_source = False
html_show_sourcelink = False
html_show_sphinx = False
html_theme_options = {
    "logo": {"text": "moxPY"},
    "navbar_align": "left",
    "show_nav_level": 1,
    "show_toc_level": 2,
    "navigation_with_keys": False,
    "secondary_sidebar_items": ["page-toc"],
    "footer_start": ["copyright"],
    "footer_end": [],
    "pygments_light_style": "a11y-high-contrast-light",
    "pygments_dark_style": "a11y-high-contrast-dark",
}
html_sidebars = {"index": []}

_PROTOTYPES = prototypes()


def add_prototypes(
    app: Any, what: str, name: str, value: Any, options: Any, lines: list[str]
) -> None:
    """Say how error messages spell a function, below all that its documentation says."""
    found = _PROTOTYPES.get(name.removeprefix("moxPY."))
    if what == "function" and name.startswith("moxPY.mox") and found:
        lines += ["", ".. rubric:: Prototypes", "", "As error messages spell them::", ""]
        lines += [f"    {prototype}" for prototype in found] + [""]


def setup(app: Any) -> None:
    # Behind numpydoc, which takes the sections apart.
    app.connect("autodoc-process-docstring", add_prototypes, priority=900)
