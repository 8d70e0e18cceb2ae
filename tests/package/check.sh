#!/usr/bin/env bash
# Installs a build into an empty prefix, moves it, and builds and runs three hosts
# outside the tree: C by pkg-config, C++ by find_package, C by dlopen.
#
# usage: check.sh CMAKE BUILD-FOLDER SOURCE-FOLDER
set -euo pipefail
cmake="$1" build="$2" source="$3"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"
cd "$work"

# Nothing of the tests, the benchmarks or the examples.
stray="$(cd prefix && find . ! -type d | grep -v -E \
  '^\./(bin/zelvan$|include/zelvan/[a-z_]+\.h$|lib[^/]*/([^/]+/)?(libzelvan\.so|pkgconfig/zelvan\.pc$|cmake/zelvan/)|share/(doc/zelvan|man/man1|bash-completion|zsh|fish)/)' || true)"
[[ -z "$stray" ]] || { echo "installed, and should not be: $stray"; exit 1; }

is() { [[ "$1" == *"$2"* ]] || { echo "got '$1' instead of '$2'"; exit 1; }; }
library="$(dirname "$(find "$work/prefix" -name libzelvan.so)")"
export LD_LIBRARY_PATH= PKG_CONFIG_PATH="$library/pkgconfig"
cp "$source"/examples/{polygon.c,roof.cpp} "$source"/tests/package/{by_name.c,consumer/CMakeLists.txt} .

cc -std=c99 -pedantic -Wall -Werror polygon.c -o polygon $(pkg-config --cflags --libs zelvan)
is "$(LD_LIBRARY_PATH="$library" ./polygon)" "area 84.000"

"$cmake" -S . -B cpp -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
"$cmake" --build cpp >/dev/null
is "$(cpp/roof)" "roof 78.984 m2"

mkdir -p header/zelvan
cp prefix/include/zelvan/{zelvan,export}.h header/zelvan
cc -Wall -Werror -Iheader by_name.c -o by_name -ldl
is "$(./by_name "$library/libzelvan.so")" "3 3 1"

[[ ! -e prefix/bin/zelvan ]] || is "$(prefix/bin/zelvan --version)" "zelvan "
echo "installed and used"
