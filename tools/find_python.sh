#!/bin/sh
# Prints a CPython with headers: $PYTHON, the PATH, pyenv's versions, else Debian's, fetched without root.
# Usage: find_python.sh FOLDER [VERSION]   (the folder for a fetched one; 3.13)
set -eu

version=${2:-3.13}

is_usable() {
    "$1" - "$version" 2>/dev/null <<'PY'
import os, sys, sysconfig
fits = sys.implementation.name == "cpython" and "%d.%d" % sys.version_info[:2] == sys.argv[1]
has_headers = os.path.exists(os.path.join(sysconfig.get_path("include"), "Python.h"))
sys.exit(not (fits and has_headers))
PY
}

for candidate in "${PYTHON:-}" "python$version" \
    "${PYENV_ROOT:-$HOME/.pyenv}"/versions/"$version"*/bin/"python$version"; do
    if [ -n "$candidate" ] && is_usable "$candidate"; then
        command -v "$candidate"
        exit 0
    fi
done

echo "No CPython $version with headers on this machine: fetching Debian's." >&2
exec python3 "$(dirname "$0")/fetch_python.py" --into "$1" --version "$version"
