#!/bin/sh
# Installs a group of pyproject.toml into the virtual environment: install_group.sh VENV GROUP
#
# uv does it in a few seconds. It knows nothing of an index that is set up for pip alone; then pip does the
# same more slowly.
set -eu

venv=$1
group="$(dirname "$0")/../pyproject.toml:$2"

pip="$venv/bin/python -m pip install -qq"
if $pip "uv>=0.7,<1" && "$venv/bin/python" -m uv pip install -q --python "$venv/bin/python" --group "$group" 2>/dev/null
then
    exit 0
fi
# Dependency groups are known to pip from 25.1 on; what an interpreter brings may be older.
$pip --upgrade "pip>=25.1"
$pip --group "$group"
