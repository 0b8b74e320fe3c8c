#!/usr/bin/env bash
# Times tyx-calc on (a - b) / (a + b) over a two-band UInt16 GeoTIFF of
# 8192 x 8192 pixels, written as Float32, against gdal_calc.py on the same job
# when python3-gdal is installed. Prints both times, their ratio and the peak
# memory of each run (from /usr/bin/time -v, when it exists).
#
#   bench/tools/calc.sh [path/to/tyx-calc]     (default: build/tools/tyx-calc)
#
# SIZE=<pixels> changes the raster's width and height.
set -euo pipefail

tool=${1:-build/tools/tyx-calc}
size=${SIZE:-8192}
[ -x "$tool" ] || { echo "no tyx-calc at $tool: build the tools first (libgdal-dev)" >&2; exit 1; }
command -v gdal_create >/dev/null || { echo "gdal_create not found (gdal-bin)" >&2; exit 1; }

work=$(mktemp -d "${TMPDIR:-/tmp}/tyx-calc-bench-XXXXXX")
trap 'rm -rf "$work"' EXIT

# Runs a command twice and prints "<seconds> <peak kilobytes>" of the faster
# run, as the machine may be busy with other work; the peak is "-" without
# /usr/bin/time.
measure() {
  local first second
  first=$(measure_once "$@")
  second=$(measure_once "$@")
  awk -v a="$first" -v b="$second" 'BEGIN { split(a, x, " "); split(b, y, " "); print (x[1] + 0 <= y[1] + 0 ? a : b) }'
}

measure_once() {
  rm -f "$work"/out-*.tif
  sync
  if [ -x /usr/bin/time ]; then
    /usr/bin/time -v -o "$work/time.txt" "$@" >/dev/null
    awk -F': ' '/Elapsed \(wall clock\)/ { n = split($2, t, ":"); s = 0;
                                           for (i = 1; i <= n; ++i) s = s * 60 + t[i]; secs = s }
                /Maximum resident set size/ { kb = $2 }
                END { printf "%.2f %d\n", secs, kb }' "$work/time.txt"
  else
    local start end
    start=$(date +%s.%N)
    "$@" >/dev/null
    end=$(date +%s.%N)
    echo "$(echo "$end - $start" | bc) -"
  fi
}

echo "making a ${size} x ${size} two-band UInt16 GeoTIFF..."
gdal_create -q -of GTiff -outsize "$size" "$size" -bands 2 -ot UInt16 -burn 1200 -burn 800 \
  -a_srs EPSG:32633 -a_ullr 500000 4000000 $((500000 + size * 10)) $((4000000 - size * 10)) "$work/in.tif"
gdal_create -q -of GTiff -outsize 1 1 -bands 2 -ot UInt16 -burn 1200 -burn 800 "$work/tiny.tif"
raster_bytes=$((size * size * 2 * 2))
# Both programs read from the page cache, and neither waits for the input's
# own write-back.
sync
cat "$work/in.tif" >/dev/null

job=(-i "a=$work/in.tif:1" -i "b=$work/in.tif:2" -e "(a - b) / (a + b)" -t Float32 -q)
read -r base_s base_kb < <(measure "$tool" -i "a=$work/tiny.tif:1" -i "b=$work/tiny.tif:2" \
  -e "(a - b) / (a + b)" -t Float32 -q -o "$work/out-tiny.tif")
read -r tyx_s tyx_kb < <(measure "$tool" "${job[@]}" -o "$work/out-tyx.tif")

echo "raster: $((raster_bytes / 1048576)) MiB of input samples"
echo "tyx-calc:     ${tyx_s} s, peak ${tyx_kb} kB"
if [ "$tyx_kb" != "-" ]; then
  awk -v p="$tyx_kb" -v b="$base_kb" -v r="$raster_bytes" 'BEGIN {
    printf "  peak memory %.1f%% of the raster; %d kB over the %d kB of the program on a 1 x 1 raster (%.1f%%)\n",
           100 * p * 1024 / r, p - b, b, 100 * (p - b) * 1024 / r }'
fi

if command -v gdal_calc.py >/dev/null && gdal_calc.py --help >/dev/null 2>&1; then
  read -r gc_s gc_kb < <(measure gdal_calc.py --quiet -A "$work/in.tif" --A_band=1 -B "$work/in.tif" --B_band=2 \
    --calc="(A.astype(float) - B) / (A.astype(float) + B)" --type=Float32 --outfile="$work/out-gdal_calc.tif")
  echo "gdal_calc.py: ${gc_s} s, peak ${gc_kb} kB"
  awk -v a="$gc_s" -v b="$tyx_s" 'BEGIN { if (b > 0) printf "tyx-calc is %.1fx as fast as gdal_calc.py\n", a / b }'
else
  echo "gdal_calc.py: not installed (python3-gdal); skipped"
fi
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores"
