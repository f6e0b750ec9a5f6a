#!/usr/bin/env bash
# Sets up the machine, builds everything and runs every test: the reference SDK's GoogleTest
# suite, the scene reader's fuzz target for a minute, then the Python suite on each interpreter.
set -uo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh || exit 1

build=build/tests
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DTOVI_BUILD_MODULE=OFF -DTOVI_BUILD_TESTS=ON -DTOVI_TEST_PYTHON="$PWD/.venv-3.12/bin/python" >/dev/null || exit 1
cmake --build "$build" || exit 1

status=0
ctest --test-dir "$build" --output-on-failure || status=1
bash tests/fuzz/run.sh || status=1
for minor in ${TOVI_PYTHONS:-3.12 3.11}; do
    echo "== pytest on CPython $minor"
    TOVI_TEST_BUILD="$PWD/$build" ".venv-$minor/bin/python" -m pytest tests/python -q -p no:cacheprovider || status=1
done
exit $status
