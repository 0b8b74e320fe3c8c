#!/usr/bin/env bash
# Builds the fuzz targets of fuzz/ with Clang and libFuzzer (AddressSanitizer
# and UndefinedBehaviorSanitizer on) and runs each in turn for the given
# number of seconds (default 60). New inputs go to build-fuzz/corpus/<target>;
# a failing input is saved under build-fuzz/artifacts/<target>/ and belongs,
# once fixed, in fuzz/regressions/<target>/, which the test suite replays.
#   [TYX_FUZZ_SEED=n] scripts/fuzz.sh [seconds per target] [target...]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
dir=${TYX_FUZZ_BUILD_DIR:-build-fuzz}
# TYX_FUZZ_SEED fixes libFuzzer's random seed, so that a short run tries the
# same inputs each time; 0, the default, draws a new seed.
seed=${TYX_FUZZ_SEED:-0}
jobs=$(nproc)

if [ $# -gt 0 ]; then
  targets=("$@")
else
  # The list kept in fuzz/CMakeLists.txt, one name a line.
  mapfile -t targets < <(sed -n '/^set(TYX_FUZZ_TARGETS/,/^)/{//!p}' fuzz/CMakeLists.txt | tr -d ' ')
fi

# -O1 keeps the fuzzers quick without the compile time of a full optimisation.
cmake -S . -B "$dir" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS_DEBUG="-O1 -gline-tables-only" -DTYX_FUZZ=ON -DTYX_BUILD_TESTS=OFF \
  -DTYX_BUILD_BENCHMARKS=OFF -DTYX_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$dir" -j "$jobs" --target "${targets[@]/#/tyx_fuzz_}"

export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
summary=()
failed=0
for t in "${targets[@]}"; do
  corpus=$dir/corpus/$t
  artifacts=$dir/artifacts/$t
  mkdir -p "$corpus" "$artifacts" "fuzz/regressions/$t"
  log=$dir/fuzz-$t.log
  # fuzz/<target>.options: extra libFuzzer flags of one target. The LUT file
  # may describe tables of up to 4 GiB, so its target may use more memory.
  extra=()
  [ -f "fuzz/$t.options" ] && read -r -a extra <"fuzz/$t.options"
  echo "== fuzz $t for ${seconds}s"
  # The first folder receives new inputs; the seeds and regressions are read.
  if "$dir/fuzz/tyx_fuzz_$t" -max_total_time="$seconds" -seed="$seed" -timeout=25 -rss_limit_mb=2560 -max_len=4096 \
       -print_final_stats=1 -artifact_prefix="$artifacts/" "${extra[@]}" \
       "$corpus" "fuzz/corpus/$t" "fuzz/regressions/$t" >"$log" 2>&1; then
    status=ok
  else
    status=FAILED
    failed=1
    tail -n 60 "$log"
    echo "Failing input in $artifacts/; keep it in fuzz/regressions/$t/ with the fix."
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  last=$(grep -E '^#[0-9]+' "$log" | tail -n 1 | grep -oE 'cov: [0-9]+ ft: [0-9]+' || true)
  summary+=("$(printf '%-14s %-7s runs: %-10s %s' "$t" "$status" "${runs:-?}" "$last")")
done

echo "== fuzz summary (${seconds}s per target)"
printf '%s\n' "${summary[@]}"
exit $failed
