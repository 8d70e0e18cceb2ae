#!/usr/bin/env bash
# Installs what is missing, builds the suite as developers do and with the
# sanitizers, runs it in both, works regions in threads, checks the formatting and says what
# share the tests have.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh

for preset in dev sanitize; do
  echo "== $preset: build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j2
  echo "== $preset: test"
  ctest --preset "$preset" -j2
done

echo "== threads"
cmake --preset threads >/dev/null
cmake --build --preset threads -j2
build/threads/test_region --gtest_filter='*ThreadsMayShare'

echo "== format"
if command -v clang-format >/dev/null; then
  git ls-files '*.c' '*.h' '*.cpp' '*.hpp' | xargs clang-format --dry-run -Werror
  echo "formatted"
else
  echo "skipped: there is no clang-format"
fi

echo "== share"
python3 scripts/share.py
