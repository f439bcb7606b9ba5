"""Print the C++ sources that changed, the newest first, for clang-tidy.

Usage: changed_sources.py [--base COMMIT] [--most N] FOLDER...

Changed is what differs from COMMIT: by default from where this branch left the main one, on the
main branch itself from the commit before. What was not committed yet counts too. A header stands
for the source of its name, one without a source for the first that includes it. Sources beyond the
N newest are named on the error output only.
"""

from __future__ import annotations

import argparse
import subprocess
import sys
from collections.abc import Iterable, Sequence
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent


def git(repository: Path, *arguments: str) -> list[str]:
    """The lines that git prints; none when it fails, as for a commit that a shallow clone lacks."""
    command = ["git", "-C", str(repository), "-c", "core.quotePath=off", *arguments]
    finished = subprocess.run(command, capture_output=True, text=True, check=False)
    return (
        [line for line in finished.stdout.splitlines() if line] if not finished.returncode else []
    )


def base_of(repository: Path) -> str | None:
    """The commit that HEAD is compared with; None when there is none before it."""
    head = git(repository, "rev-parse", "HEAD")
    if not head:
        raise SystemExit(f"{repository} is no git repository with a commit")
    for branch in ("origin/main", "main"):
        fork = git(repository, "merge-base", "HEAD", branch)
        if fork and fork != head:
            return fork[0]
    return next(iter(git(repository, "rev-parse", "--verify", "HEAD~1")), None)


def changed_files(repository: Path, base: str | None) -> list[str]:
    """Names of the files that differ from `base`, the newest change first, each once."""
    # A commit without one before it, as the only one of a shallow clone, has changed all its files.
    commits = [f"{base}..HEAD"] if base else ["-1"]
    names = [
        *git(repository, "ls-files", "--others", "--exclude-standard"),
        *git(repository, "diff", "--name-only", "HEAD"),
        *git(repository, "log", "--format=", "--name-only", *commits),
    ]
    return [name for name in dict.fromkeys(names) if (repository / name).is_file()]


def include_name(header: str) -> str:
    """How other files include a header: libraries have a folder "include" for theirs."""
    return header.rpartition("/include/")[2]


def source_for(repository: Path, name: str, folders: Sequence[str]) -> str | None:
    """The source that shows a change of this file to a compiler."""
    if not name.startswith(tuple(f"{folder}/" for folder in folders)):
        return None
    if name.endswith(".cpp"):
        return name
    if not name.endswith(".hpp"):
        return None
    own = name.removesuffix(".hpp") + ".cpp"
    if (repository / own).is_file():
        return own
    included = (f'#include "{include_name(name)}"', f"#include <{include_name(name)}>")
    patterns = [part for text in included for part in ("-e", text)]
    folders_of_sources = [f"{folder}/**.cpp" for folder in folders]
    found = git(repository, "grep", "-lF", *patterns, "--", *folders_of_sources)
    return next(iter(found), None)


def changed_sources(repository: Path, base: str | None, folders: Sequence[str]) -> list[str]:
    """The sources to look at, the newest change first, each once."""
    names = changed_files(repository, base)
    sources = (source_for(repository, name, folders) for name in names)
    return list(dict.fromkeys(source for source in sources if source))


def report_left_out(sources: Iterable[str]) -> None:
    for source in sources:
        print(f"Left out, its change is older: {source}", file=sys.stderr)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--base", metavar="COMMIT")
    parser.add_argument("--most", metavar="N", type=int)
    parser.add_argument("folders", metavar="FOLDER", nargs="+")
    options = parser.parse_args()
    sources = changed_sources(PROJECT, options.base or base_of(PROJECT), options.folders)
    print(*sources[: options.most], sep="\n")
    report_left_out(sources[len(sources[: options.most]) :])
    return 0


if __name__ == "__main__":
    sys.exit(main())
