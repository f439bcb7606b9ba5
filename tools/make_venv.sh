#!/bin/sh
# Makes the virtual environment that building and the demonstration need: make_venv.sh VENV INTERPRETER PIP_FOLDER
# PIP_FOLDER serves only an interpreter without pip: Debian's pip is unpacked there.
#
# uv, which fills it, neither finds nor brings the interpreter: what it would download does not come from a
# package index, and a distribution's own headers are what the module is built with.
set -eu

venv=$1
interpreter=$2
pip_folder=$3
tools=$(dirname "$0")

if "$venv/bin/python" -m pip --version >/dev/null 2>&1; then
    : # Made before: only its packages are brought up to date.
elif ! "$interpreter" -m venv --clear "$venv" >/dev/null 2>&1; then
    "$interpreter" -m venv --clear --without-pip "$venv"
    wheels=$pip_folder/usr/share/python-wheels
    ls "$wheels"/pip-*.whl >/dev/null 2>&1 ||
        python3 "$tools/fetch_packages.py" --into "$pip_folder" python3-pip-whl
    for wheel in "$wheels"/pip-*.whl; do
        "$venv/bin/python" "$wheel/pip" install -qq "$wheel"
    done
fi

exec "$tools/install_group.sh" "$venv" demo
