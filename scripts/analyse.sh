#!/usr/bin/env bash
# Static analysis of the library, the host program and the examples by clang-tidy, with the
# list in .clang-tidy. Installs what is missing; any finding is a failure.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh clang-tidy
cmake --preset dev >/dev/null
log=build/dev/analysis.log
if run-clang-tidy -p build/dev -j"$(nproc)" -quiet -extra-arg=-Wno-deprecated-copy '/(src|tools|examples)/.*\.cpp$' >"$log" 2>&1; then
  echo "static analysis: clean"
else
  grep -E -A4 '(warning|error): ' "$log"
  exit 1
fi
