#!/usr/bin/env bash
# Looks for input that breaks the library: scripts/fuzz.sh [SECONDS]. Needs Clang.
# What it finds is left in build/fuzz/; new inputs that reach new code join
# fuzz/corpus/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds="${1:-60}"

cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link \
  -DZELVAN_SANITIZE=ON -DZELVAN_FUZZ=ON \
  -DZELVAN_BUILD_TOOLS=OFF -DZELVAN_BUILD_EXAMPLES=OFF >/dev/null
cmake --build build/fuzz -j2 --target fuzz_flat
mkdir -p build/fuzz/found fuzz/corpus
build/fuzz/fuzz_flat build/fuzz/found fuzz/corpus -max_total_time="$seconds" \
  -max_len=300 -timeout=5 -artifact_prefix=build/fuzz/
build/fuzz/fuzz_flat -set_cover_merge=1 fuzz/corpus build/fuzz/found >/dev/null 2>&1
echo "corpus: $(find fuzz/corpus -type f | wc -l) inputs"
