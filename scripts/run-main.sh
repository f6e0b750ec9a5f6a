#!/usr/bin/env bash
# Sets up the machine, builds and installs tovi, and runs the main example.
set -euo pipefail
cd "$(dirname "$0")/.."
TOVI_PYTHONS=3.12 bash scripts/setup.sh
exec .venv-3.12/bin/python examples/main.py "$@"
