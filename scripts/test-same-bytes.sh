#!/usr/bin/env bash
# The same calls give the same bytes: builds the library with GCC and with Clang,
# without optimisation and with all of it, and compares what each answers, and what
# it exports, with the lists in tests/. (scripts/test-windows.sh compares the DLL.)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh clang

for compiler in g++ clang++; do
  for level in -O0 -O3; do
    folder="build/same-bytes/$compiler$level"
    echo "== $compiler $level"
    cmake -S . -B "$folder" -G Ninja -D CMAKE_BUILD_TYPE= \
      -D CMAKE_CXX_COMPILER="$compiler" -D CMAKE_CXX_FLAGS="$level" \
      -D ZELVAN_BUILD_TOOLS=OFF -D ZELVAN_BUILD_EXAMPLES=OFF >/dev/null
    cmake --build "$folder" -j2 --target zelvan same_bytes >/dev/null
    ctest --test-dir "$folder" -R '^(same_bytes|exports)$' --output-on-failure --no-tests=error -j2
  done
done
