#!/usr/bin/env bash
# Measures the library beside its peers in one run, and writes the tables and the
# plot of docs/PERFORMANCE.md:
#
#   scripts/bench.sh [--quick] [triangulation|booleans]
#
# Everything is measured where no work is named. --quick takes a minute or two: small
# sizes and short limits. The peers are installed where they are missing; the lines
# that the tables are made of stay in build/bench/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
command="scripts/bench.sh${*:+ $*}"
quick=()
works=()
for argument in "$@"; do
  case "$argument" in
    --quick) quick=(--quick) ;;
    triangulation | booleans) works+=("$argument") ;;
    *) echo "usage: scripts/bench.sh [--quick] [triangulation|booleans]" >&2; exit 2 ;;
  esac
done
((${#works[@]})) || works=(triangulation booleans)

scripts/install-deps.sh libcgal-dev libglu1-mesa-dev libpolyclipping-dev python3-mapbox-earcut

build=build/bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZELVAN_BUILD_BENCHMARKS=ON \
  -DZELVAN_BUILD_TESTS=OFF -DZELVAN_BUILD_TOOLS=OFF -DZELVAN_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$build" -j2

: >"$build/lines.tsv"
# measure PROGRAM ARGUMENTS...: adds the lines of one engine. One that fails, or is not
# there, costs its own lines only.
measure() {
  echo "== $1 ($(date +%T))" >&2
  "$build/$1" "${@:2}" "${quick[@]}" >>"$build/lines.tsv" || echo "$1 failed" >&2
}
for work in "${works[@]}"; do
  if [[ "$work" == triangulation ]]; then
    for engine in zelvan delaunay cgal glu earcut geos; do
      measure "bench_triangulation_$engine" data/countries-50m.geojson
    done
  else
    for engine in zelvan sweep clipper geos cgal; do measure "bench_boolean_$engine"; done
  fi
done

python3 bench/report.py "$build/lines.tsv" docs/PERFORMANCE.md docs/triangulation-times.svg \
  "$command"
