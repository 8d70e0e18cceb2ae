#!/usr/bin/env bash
# Makes this machine ready to build for WebAssembly and to try the page: Emscripten, esbuild, and
# with --browser Chromium, both as Debian packages them, Node, and the npm packages that
# the tests need. With everything there it says nothing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packages=(emscripten node-acorn esbuild)
[[ "${1:-}" != --browser ]] || packages+=(chromium fonts-dejavu-core)
command -v node >/dev/null || packages+=(nodejs)
command -v npm >/dev/null || packages+=(npm)
scripts/install-deps.sh "${packages[@]}"

if [[ "${1:-}" == --browser && tests/web/node_modules/.package-lock.json -ot tests/web/package-lock.json ]]; then
  echo "Installing the npm packages of the tests"
  npm ci --prefix tests/web --silent
fi
