#!/usr/bin/env bash
# Cross-builds the library and the suite for 32-bit Windows, runs the suite in Wine,
# and tries the DLL as it is shipped. What is missing is installed: the cross compiler,
# and, unless the machine's own Wine runs 32-bit programs, a small i386 system with Wine
# in the user's cache folder. Where that cannot be done the run is skipped, and says why;
# with CI=true that is a failure.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

status=0
scripts/setup-windows.sh || status=$?
if ((status == 3)) && [[ "${CI:-}" != true ]]; then
  echo "skipped: 32-bit Windows cannot be tried on this machine (the reason is above)"
  exit 0
fi
((status == 0)) || exit "$status"

for preset in windows-x86-dev windows-x86; do
  echo "== $preset: build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j2
done

echo "== windows-x86-dev: test"
ctest --preset windows-x86-dev -j2

echo "== windows-x86: the DLL as it is shipped"
shipped=build/windows-x86/check
mkdir -p "$shipped"
cp build/windows-x86/zelvan.dll build/windows-x86-dev/{dll_host,same_bytes}.exe "$shipped"
scripts/wine.sh "$shipped/dll_host.exe" "$shipped/zelvan.dll"
scripts/wine.sh "$shipped/same_bytes.exe" data tests/same_bytes/list.txt
cmake -D LIBRARY="$shipped/zelvan.dll" -D LIST=tests/exports/windows.txt \
  -D OBJDUMP=i686-w64-mingw32-objdump -P tests/exports/check.cmake
