#!/usr/bin/env bash
# Which lines of src/ the suite runs: builds with gcov's counters, runs the tests, and prints the
# share of each file below a hundred per cent with the lines that never ran.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh gcovr
cmake --preset dev -B build/coverage -DCMAKE_CXX_FLAGS="--coverage -fprofile-update=atomic" \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -DCMAKE_C_FLAGS=--coverage -DZELVAN_WERROR=OFF >/dev/null
cmake --build build/coverage -j"$(nproc)"
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage -j"$(nproc)" --output-on-failure -E python  # whose program has no counters
gcovr --root . --filter src/ --exclude-unreachable-branches --exclude-throw-branches \
  build/coverage/src | tee build/coverage/coverage.txt
