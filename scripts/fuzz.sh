#!/usr/bin/env bash
# Looks for input that breaks the library, or the readers of the host program:
# scripts/fuzz.sh [MINUTES [TARGET...]], with Clang's libFuzzer under the address and
# undefined-behaviour sanitizers. What breaks something is left in build/fuzz/; fuzz/corpus/
# becomes a small set of inputs that reaches all code that was reached. Prints how often each
# target ran, and how much its corpus covers of src/, of the toolkit there, or of what reads and
# writes in tools/. With 0 minutes it only prints the coverage.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
minutes="${1:-1}"
targets=("${@:2}")
((${#targets[@]})) || targets=(flat regions toolkit readers)
scripts/install-deps.sh clang libclang-rt-dev llvm

# configure FOLDER FLAGS OPTION...
configure() {
  cmake -S . -B "$1" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS="$2" \
    -DZELVAN_BUILD_EXAMPLES=OFF "${@:3}" >/dev/null
}

# fuzz TARGET
fuzz() {
  local program="build/fuzz/fuzz_$1" found="build/fuzz/found-$1" corpus="fuzz/corpus/$1"
  cmake --build build/fuzz -j2 --target "fuzz_$1" >/dev/null
  mkdir -p "$found" "$corpus"
  "$program" "$found" "$corpus" -max_total_time=$((minutes * 60)) -max_len=600 -timeout=30 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/$1-" 2>&1 |
    tee "build/fuzz/$1.log" | grep -E 'ERROR|number_of_executed_units' || true
  grep -q number_of_executed_units "build/fuzz/$1.log"
  keep "$program" "$corpus" "$found"
}

# Keeps the fewest inputs that reach all code, however often:
# keep PROGRAM CORPUS FOUND
keep() {
  local merged="build/fuzz/merged"
  rm -rf "$merged" && mkdir -p "$merged"
  "$1" -set_cover_merge=1 -use_counters=0 "$merged" "$2" "$3" >/dev/null 2>&1
  rm -rf "$2" && mv "$merged" "$2"
}

# cover TARGET
cover() {
  local program="build/fuzz-coverage/fuzz_replay_$1" profile="build/fuzz-coverage/$1" sources=(src)
  cmake --build build/fuzz-coverage -j2 --target "fuzz_replay_$1" >/dev/null
  LLVM_PROFILE_FILE="$profile.raw" "$program" "fuzz/corpus/$1"
  llvm-profdata merge -o "$profile.data" "$profile.raw"
  [[ "$1" != toolkit ]] || sources=(src/math)
  [[ "$1" != readers ]] || sources=(tools/{input,read_geojson,read_wkt,geometry,write_rings}.cpp)
  llvm-cov report "$program" -instr-profile="$profile.data" "${sources[@]}" |
    awk -v of="${sources[*]}" '/^TOTAL/ { print $8 - $9 " of " $8 " lines of " of ": " $10 }'
}

configure build/fuzz -fsanitize=fuzzer-no-link -DZELVAN_SANITIZE=ON -DZELVAN_FUZZ=ON
configure build/fuzz-coverage '-fprofile-instr-generate -fcoverage-mapping'
for target in "${targets[@]}"; do
  echo "== $target"
  ((minutes == 0)) || fuzz "$target"
  cover "$target"
done
