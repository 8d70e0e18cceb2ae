#!/usr/bin/env bash
# Compares the library with the peers that Debian packages, and writes the tables
# into docs/PERFORMANCE.md and the curves into docs/triangulation-times.svg.
#
#   scripts/bench.sh [--quick] [triangulation|booleans]
#
# --quick takes small sizes only, to try the comparison. An entry has eight seconds for
# a run: a slow peer is not tried at larger sizes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

quick=()
parts=()
for argument in "$@"; do
  case "$argument" in
    --quick) quick=(--quick) ;;
    triangulation | booleans) parts+=("$argument") ;;
    *) sed -n '2,8s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
  esac
done
((${#parts[@]})) || parts=(triangulation booleans)

peers=(libcgal-dev libglu1-mesa-dev python3-mapbox-earcut libgeos-dev libpolyclipping-dev)
scripts/install-deps.sh "${peers[@]}"

echo "== build"
cmake --preset release -D ZELVAN_BUILD_PEERS=ON >/dev/null
cmake --build --preset release -j2 --target "${parts[@]/#/bench_compare_}"

mkdir -p out
versions="$(dpkg-query -W -f '${Package} ${Version}, ' "${peers[@]}")"
for part in "${parts[@]}"; do
  echo "== $part"
  data=()
  [[ "$part" == triangulation ]] && data=(data/countries-50m.geojson)
  "build/release/bench_compare_$part" "${data[@]}" "${quick[@]}" >"out/bench-$part.tsv"
  python3 -B bench/report.py "$part" "out/bench-$part.tsv" \
    --command "scripts/bench.sh ${quick[*]}${quick:+ }$part" --versions "${versions%, }" "${quick[@]}"
done
