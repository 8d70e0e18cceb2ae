#!/usr/bin/env bash
# Makes a million calls of the flat interface and a million operations on regions, each judged,
# from the fuzzers' corpora over and over, and fails where resident memory has grown by more than
# 1 % (and 1 MB) from a tenth of the way to the end: scripts/soak.sh [CALLS]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
calls="${1:-1000000}"
scripts/install-deps.sh

cmake --preset dev >/dev/null
cmake --build --preset dev -j2 --target fuzz_replay_flat fuzz_replay_regions >/dev/null
for target in flat regions; do
  echo "$target: $calls calls"
  "build/dev/fuzz_replay_$target" "fuzz/corpus/$target" "$calls" |
    awk -v page="$(getconf PAGESIZE)" '
      /pages/ { at[++n] = $3 * page / 1024; printf "  %s %s %d KB\n", $1, $2, at[n] }
      END { exit !(n == 3 && at[3] <= at[1] * 1.01 + 1024) }'
done
