#!/usr/bin/env bash
# The man page names the commands and options that the program's help names, and
# no others. usage: man_page.sh PROGRAM MAN-PAGE
set -euo pipefail
help="$("$1" --help)"
commands="$(sed -n '/^Commands:/,$s/^  \([a-z]*\)  .*/\1/p' <<<"$help")"
for command in $commands; do
  grep -q "^\.B $command$" "$2" || { echo "no command $command in the man page"; exit 1; }
  help+=$'\n'"$("$1" "$command" --help)"
done
options() { grep -oE -- '--[a-z]+(-[a-z]+)*' | sort -u; }
diff <(options <<<"$help") <(sed 's/\\-/-/g' "$2" | options) || { echo "options differ"; exit 1; }
[[ -n "$commands" ]]
