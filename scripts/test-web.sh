#!/usr/bin/env bash
# Builds the library for WebAssembly and holds it to the list of answers in Node; then the
# npm package, installed and used as a stranger does, and the page in a real browser, beside
# the native program. What is missing is installed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup-wasm.sh --browser

echo "== build"
cmake --preset wasm >/dev/null
cmake --build --preset wasm -j2
cmake --preset dev >/dev/null
cmake --build --preset dev -j2 --target zelvan_tool
scripts/web.sh --build >/dev/null

echo "== the list of answers in Node"
ctest --preset wasm

echo "== the package and the page"
node --expose-gc --test tests/web/*.test.mjs
