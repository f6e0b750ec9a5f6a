#!/usr/bin/env bash
# Installs what the build and the tests need on a Debian machine, then builds and installs the
# package into one virtual environment per interpreter (.venv-3.12 and .venv-3.11).
set -euo pipefail
cd "$(dirname "$0")/.."

debian_packages=(
    build-essential cmake ninja-build pkg-config clang libclang-rt-14-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libembree-dev libtbb-dev
    libpng-dev libjpeg62-turbo-dev libtiff-dev libopenexr-dev libstb-dev zlib1g-dev
    nlohmann-json3-dev libasio-dev
)

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

missing=()
for package in "${debian_packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "setup: installing Debian packages: ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}" >/dev/null
fi

# The newest CPython of a minor version: on the PATH, or under pyenv.
find_python() {
    local minor=$1 candidate
    local root=${PYENV_ROOT:-$HOME/.pyenv}
    for candidate in $(ls -d "$root"/versions/"$minor".*/bin/python"$minor" 2>/dev/null | sort -V -r); do
        "$candidate" -c 'import sys' 2>/dev/null && { echo "$candidate"; return 0; }
    done
    for candidate in "python$minor" "/usr/bin/python$minor"; do
        if command -v "$candidate" >/dev/null 2>&1 && "$candidate" -c 'import sys' 2>/dev/null; then
            command -v "$candidate"; return 0
        fi
    done
    return 1
}

for minor in ${TOVI_PYTHONS:-3.12 3.11}; do
    python=$(find_python "$minor") || { echo "setup: CPython $minor not found (PATH or pyenv)" >&2; exit 1; }
    venv=.venv-$minor
    if [ ! -x "$venv/bin/python" ]; then
        "$python" -m venv "$venv"
        "$venv/bin/python" -m pip install -q --upgrade pip
    fi
    "$venv/bin/python" -m pip install -q pytest numpy hypothesis
    echo "setup: building tovi for $("$venv/bin/python" -V)"
    "$venv/bin/python" -m pip install -q .
done
