#!/usr/bin/env bash
# Looks for input that breaks the library: scripts/fuzz.sh [SECONDS], for each target. Needs
# Clang. What it finds is left in build/fuzz/; new inputs that reach new code join fuzz/corpus/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds="${1:-60}"

cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link \
  -DZELVAN_SANITIZE=ON -DZELVAN_FUZZ=ON \
  -DZELVAN_BUILD_TOOLS=OFF -DZELVAN_BUILD_EXAMPLES=OFF >/dev/null
for target in flat regions; do
  cmake --build build/fuzz -j2 --target "fuzz_$target"
  found="build/fuzz/found-$target" corpus="fuzz/corpus/$target"
  mkdir -p "$found" "$corpus"
  "build/fuzz/fuzz_$target" "$found" "$corpus" -max_total_time="$seconds" \
    -max_len=300 -timeout=5 -artifact_prefix=build/fuzz/
  "build/fuzz/fuzz_$target" -set_cover_merge=1 "$corpus" "$found" >/dev/null 2>&1
  echo "$target: $(find "$corpus" -type f | wc -l) inputs"
done
