"""Debian packages of any suite, fetched and unpacked without root.

apt runs with a configuration of its own: own list of sources, own index, own cache, and a status
file that knows no installed package. The machine's sources only say where its mirror is and which
key signs it; the suite is swapped. apt checks the signature of the index and the SHA-256 of every
package.
"""

from __future__ import annotations

import fnmatch
import re
import shutil
import subprocess
import tempfile
from collections.abc import Iterable, Iterator, Mapping
from dataclasses import dataclass
from pathlib import Path


class FetchError(Exception):
    """A package could not be had; the text says which step failed and what can be done."""


@dataclass(frozen=True)
class Mirror:
    """Where the machine's own Debian packages come from."""

    uri: str
    signed_by: str | None


def release_codename(os_release: str) -> str:
    """Codename in the text of /etc/os-release."""
    match = re.search(r"^VERSION_CODENAME=\"?([\w-]+)\"?$", os_release, re.MULTILINE)
    if not match:
        raise FetchError("This machine does not name a Debian release in /etc/os-release.")
    return match.group(1)


def mirrors_in_list(text: str, suite: str) -> Iterator[Mirror]:
    """Mirrors of a one-line-style file: `deb [signed-by=...] uri suite component...`."""
    for line in text.splitlines():
        match = re.match(r"deb\s+(?:\[([^\]]*)\]\s+)?(\S+)\s+(\S+)\s+(.*)", line.strip())
        if match and match.group(3) == suite and "main" in match.group(4).split():
            key = re.search(r"signed-by=(\S+)", match.group(1) or "")
            yield Mirror(match.group(2), key.group(1) if key else None)


def mirrors_in_sources(text: str, suite: str) -> Iterator[Mirror]:
    """Mirrors of a deb822-style file; a key may be a path or a block on lines of its own."""
    without_comments = "".join(
        line for line in text.splitlines(keepends=True) if not line.startswith("#")
    )
    for stanza in re.split(r"\n\s*\n", without_comments):
        fields = {
            name.lower(): value.strip()
            for name, value in re.findall(r"^([\w-]+):((?:.*)(?:\n[ \t].*)*)", stanza, re.MULTILINE)
        }
        offers_suite = suite in fields.get("suites", "").split()
        offers_main = "main" in fields.get("components", "").split()
        is_enabled = fields.get("enabled", "yes").lower() not in ("no", "false", "0")
        if offers_suite and offers_main and is_enabled and "deb" in fields.get("types", "").split():
            yield Mirror(fields["uris"].split()[0], fields.get("signed-by"))


def machine_mirror() -> Mirror:
    """The mirror from which this machine takes the main component of its own release."""
    try:
        suite = release_codename(Path("/etc/os-release").read_text(encoding="utf-8"))
    except OSError as error:
        raise FetchError(f"This machine's release is unknown: {error}") from error
    apt = Path("/etc/apt")
    for path in [apt / "sources.list", *sorted((apt / "sources.list.d").glob("*"))]:
        if not path.is_file() or path.suffix not in (".list", ".sources"):
            continue
        parse = mirrors_in_list if path.suffix == ".list" else mirrors_in_sources
        for mirror in parse(path.read_text(encoding="utf-8"), suite):
            return mirror
    raise FetchError(f"No source below {apt} offers the main component of '{suite}'.")


class PrivateApt:
    """apt for one suite, with everything it writes below one folder.

    Its kind is "deb" for packages, "deb-src" for sources. The architecture, in Debian's words, is
    that of the machine where none is given.
    """

    def __init__(
        self,
        folder: Path,
        suite: str,
        mirror: Mirror,
        kind: str = "deb",
        architecture: str = "",
    ) -> None:
        self.suite = suite
        self.architecture_ = architecture
        self.folder_ = folder.resolve() / suite
        for part in ("lists/partial", "cache/archives/partial"):
            (self.folder_ / part).mkdir(parents=True, exist_ok=True)
        (self.folder_ / "status").touch()
        key = f"Signed-By: {mirror.signed_by}\n" if mirror.signed_by else ""
        (self.folder_ / "suite.sources").write_text(
            f"Types: {kind}\nURIs: {mirror.uri}\nSuites: {suite}\nComponents: main\n{key}",
            encoding="utf-8",
        )

    def update(self) -> None:
        """Bring the index up to date."""
        self.run_("apt-get", "-qq", "update", "--error-on=any")

    def versions_like(self, requests: Mapping[str, str]) -> dict[str, str]:
        """Package -> a version that its pattern matches (shell style), for those that have one."""
        return versions_in(self.run_("apt-cache", "madison", *requests), requests)

    def download(self, packages: Iterable[str], folder: Path) -> list[Path]:
        """The named packages alone, as files in the folder."""
        self.run_("apt-get", "-qq", "download", *packages, cwd=folder)
        return sorted(folder.glob("*.deb"))

    def download_source(self, package: str, folder: Path) -> list[Path]:
        """The files of the source of a package, for suites opened with kind "deb-src"."""
        self.run_("apt-get", "-qq", "source", "--download-only", package, cwd=folder)
        return sorted(folder.iterdir())

    def download_with_dependencies(self, packages: Iterable[str]) -> list[Path]:
        """The named packages and all that they depend on, down to the C library."""
        self.run_(
            "apt-get", "-qq", "install", "--download-only", "--yes", "--no-install-recommends",
            *packages,
        )  # fmt: skip
        return sorted((self.folder_ / "cache/archives").glob("*.deb"))

    def run_(self, *command: str, cwd: Path | None = None) -> str:
        program, *arguments = command
        options = {
            "Dir::Etc::sourcelist": self.folder_ / "suite.sources",
            "Dir::Etc::sourceparts": "-",
            "Dir::Etc::preferences": "-",
            "Dir::Etc::preferencesparts": "-",
            "Dir::State::lists": self.folder_ / "lists",
            "Dir::State::status": self.folder_ / "status",
            "Dir::State::extended_states": self.folder_ / "extended_states",
            "Dir::Cache": self.folder_ / "cache",
            # Some machines keep no digest of the index, and read the whole of it for each command.
            "Dir::Cache::pkgcache": "pkgcache.bin",
            "Acquire::Languages": "none",
            # A mirror that lags behind its index's validity still serves; signatures and hashes
            # are checked all the same.
            "Acquire::Check-Valid-Until": "false",
            # Nothing is installed, so dpkg's lock, which only root may take, is not needed.
            "Debug::NoLocking": "true",
            # Started by root, apt would change to a user that may not be able to enter our folder.
            "APT::Sandbox::User": "root",
        }
        if self.architecture_:
            options["APT::Architecture"] = self.architecture_
            options["APT::Architectures"] = self.architecture_
        flags = [f"--option={name}={value}" for name, value in options.items()]
        try:
            finished = subprocess.run(
                [program, *flags, *arguments], cwd=cwd, capture_output=True, text=True, check=False
            )
        except FileNotFoundError as error:
            raise FetchError(f"{program} is missing: this step works on Debian only.") from error
        if finished.returncode != 0:
            raise FetchError(
                f"{program} {' '.join(arguments)} failed for suite '{self.suite}':\n"
                f"{finished.stderr.strip()}"
            )
        return finished.stdout


def unpack(archives: Iterable[Path], root: Path) -> None:
    """Unpack the packages' files below root; nothing is configured or run."""
    root.mkdir(parents=True, exist_ok=True)
    for archive in archives:
        subprocess.run(["dpkg", "--extract", archive, root], check=True)


def versions_in(madison: str, requests: Mapping[str, str]) -> dict[str, str]:
    """Package -> first version that its pattern matches, in what `apt-cache madison` prints."""
    found: dict[str, str] = {}
    for line in madison.splitlines():
        package, version, *_ = (field.strip() for field in line.split("|"))
        if package in requests and fnmatch.fnmatchcase(version, requests[package]):
            found.setdefault(package, version)
    return found


def fetch_into(root: Path, requests: Mapping[str, str], suites: Iterable[str]) -> Iterator[str]:
    """Unpack packages, each in a version that its pattern matches.

    The first suite that has one serves. Gives "package version (suite)" for each; ends with an
    error that names those that no suite has.
    """
    mirror = machine_mirror()
    missing = dict(requests)
    refusals = []
    for suite in suites:
        if not missing:
            return
        apt = PrivateApt(root / "apt", suite, mirror)
        try:
            apt.update()
            versions = apt.versions_like(missing)
            if versions:
                wanted = [f"{package}={version}" for package, version in versions.items()]
                with tempfile.TemporaryDirectory() as folder:
                    unpack(apt.download(wanted, Path(folder)), root)
        except FetchError as error:
            refusals.append(str(error))
            continue
        for package, version in versions.items():
            del missing[package]
            yield f"{package} {version} ({suite})"
        refusals += [
            f"suite '{suite}' has no {package} of version {pattern}"
            for package, pattern in missing.items()
        ]
    if missing:
        raise FetchError("\n".join([f"{', '.join(missing)} could not be fetched:", *refusals]))


def require_tools() -> None:
    """Fail early, and in words, where there is no apt or dpkg."""
    missing = [tool for tool in ("apt-get", "apt-cache", "dpkg") if not shutil.which(tool)]
    if missing:
        raise FetchError(f"{', '.join(missing)} not found: packages are fetched on Debian only.")
