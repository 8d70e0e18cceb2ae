#!/usr/bin/env bash
# Makes the API pages from the public headers: docs/api/*.md, which are kept in
# the repository, and build/docs/html. A warning is an error.
#
#   scripts/make-docs.sh           installs Doxygen when missing, writes the pages
#   scripts/make-docs.sh --check   installs and writes nothing; fails when a header
#                                  has warnings or a kept page is not current, and
#                                  exits with 77 where that cannot be told
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if [[ "${1:-}" == --check ]]; then
  for tool in doxygen python3; do
    command -v "$tool" >/dev/null || { echo "skipped: there is no $tool"; exit 77; }
  done
  pages=build/docs/api
else
  command -v doxygen >/dev/null && command -v python3 >/dev/null || scripts/install-deps.sh
  pages=docs/api
fi

rm -rf build/docs "$pages"
mkdir -p build/docs
doxygen docs/Doxyfile
python3 scripts/api-pages.py build/docs/xml "$pages"
[[ "$pages" != docs/api ]] || { echo "docs/api/ and build/docs/html/index.html"; exit 0; }

made="$(sed -n 's/^<!-- .*\(Doxygen [0-9.]*[0-9]\)\. -->$/\1/p' docs/api/zelvan.md)"
if [[ "$made" != "Doxygen $(doxygen --version | cut -d' ' -f1)" ]]; then
  echo "skipped: no warnings, but the pages in docs/api are of $made, not of this one"
  exit 77
fi
diff -ru docs/api "$pages" || { echo "docs/api is not current: run scripts/make-docs.sh"; exit 1; }
echo "docs/api is current"
