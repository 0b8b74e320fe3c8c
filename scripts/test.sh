#!/usr/bin/env bash
# Builds tyx normally and with AddressSanitizer and UndefinedBehaviorSanitizer
# and runs the whole test suite in each build; then runs the threaded tests
# under ThreadSanitizer, and each fuzz target for a short while.
set -euo pipefail
cd "$(dirname "$0")/.."

jobs=$(nproc)

run_suite() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -G Ninja -DTYX_WARNINGS_AS_ERRORS=ON "$@"
  cmake --build "$dir" -j "$jobs"
  ctest --test-dir "$dir" --output-on-failure -j "$jobs"
}

# The tools must be built, and their end-to-end tests run, here.
run_suite build -DTYX_BUILD_TOOLS=ON
# The sanitizer build is unoptimised: the tile templates compile several
# times faster at -O0, and the tests use small data.
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  run_suite build-sanitize -DCMAKE_BUILD_TYPE=Debug -DTYX_SANITIZE=ON -DTYX_BUILD_BENCHMARKS=OFF
# ThreadSanitizer: the programs that load the shared tables from several
# threads at once, and the loops that run on oneTBB's threads (band math in
# blocks, roundclip, the image tile loops). Only they are built and run.
cmake -S . -B build-tsan -G Ninja -DTYX_WARNINGS_AS_ERRORS=ON -DCMAKE_BUILD_TYPE=Debug -DTYX_SANITIZE=thread \
  -DTYX_BUILD_BENCHMARKS=OFF -DTYX_BUILD_EXAMPLES=OFF
cmake --build build-tsan -j "$jobs" --target tyx_core_tests tyx_threads_tests tyx_parallel_tests
TSAN_OPTIONS=halt_on_error=1 ctest --test-dir build-tsan --output-on-failure \
  -R '^(core|core_program_paths_first_use|threads|threads_.*|parallel)$'
# Fuzz smoke run: each target of fuzz/ for 20 seconds (Clang and libFuzzer),
# from a fixed seed so that every run tries the same inputs.
TYX_FUZZ_SEED=1 ./scripts/fuzz.sh 20
