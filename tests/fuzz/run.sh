#!/usr/bin/env bash
# Builds the scene reader's fuzz target with clang, AddressSanitizer (with leak checks) and
# UndefinedBehaviorSanitizer, seeds its corpus from the examples of docs/tvscene-format.md and
# fuzzes for TOVI_FUZZ_SECONDS (60 by default). Fails on any finding.
set -euo pipefail
cd "$(dirname "$0")/../.."
seconds=${TOVI_FUZZ_SECONDS:-60}
build=build/fuzz
sanitizers="-fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all -fno-omit-frame-pointer"
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTOVI_BUILD_MODULE=OFF -DTOVI_BUILD_FUZZ=ON -DCMAKE_C_FLAGS="$sanitizers" -DCMAKE_CXX_FLAGS="$sanitizers" >/dev/null
cmake --build "$build" --target scene_reader_fuzz

# The seeds: every ```tvscene example of the format's page, one file each, and the inputs of
# earlier findings (tests/fuzz/regressions/).
seeds=$build/seeds
rm -rf "$seeds" && mkdir -p "$seeds" "$build/corpus"
awk -v dir="$seeds" '/^```tvscene$/ {n++; file=dir "/example" n ".tvscene"; next}
                     /^```$/ {file=""; next}
                     file != "" {print > file}' docs/tvscene-format.md
[ -n "$(ls "$seeds")" ] || { echo "fuzz: no examples found in docs/tvscene-format.md" >&2; exit 1; }

echo "== fuzzing the scene reader for ${seconds}s"
set +e
"$build/tests/fuzz/scene_reader_fuzz" -max_total_time="$seconds" -max_len=16384 -timeout=10 -rss_limit_mb=2048 \
    -dict=tests/fuzz/tvscene.dict -print_final_stats=1 -artifact_prefix="$build/" "$build/corpus" "$seeds" tests/fuzz/regressions \
    >"$build/fuzz.log" 2>&1
status=$?
set -e
grep -E "^stat::(number_of_executed_units|peak_rss_mb)" "$build/fuzz.log" || true
if [ $status -ne 0 ]; then
    echo "fuzz: the scene reader failed (exit $status); the input is saved in $build/, the log follows" >&2
    grep -v "^#" "$build/fuzz.log" | tail -60 >&2
fi
exit $status
