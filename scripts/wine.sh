#!/usr/bin/env bash
# scripts/wine.sh PROGRAM.exe [ARGUMENT...]: runs a 32-bit Windows program, in the
# machine's Wine or in the i386 system that scripts/setup-windows.sh makes. There the
# project's folder stands where it stands here, for as long as the program runs.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/windows-env.sh"
project="$(dirname "$here")"

# No crash dialogues, no menus, no helpers that nobody asked for.
settings=(WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES='winemenubuilder.exe,mscoree,mshtml=d')

if machine_has_wine; then
  exec env "${settings[@]}" wine "$@"
fi
# shellcheck disable=SC2016
exec "${as_root[@]}" unshare --mount --propagation private bash -c '
  root=$1 project=$2 folder=$3; shift 3
  mkdir -p "$root$project"
  mount --bind "$project" "$root$project"
  mount --bind /proc "$root/proc"
  mount --bind /dev "$root/dev"
  exec chroot "$root" /usr/bin/env -i PATH=/usr/bin:/bin HOME=/root "${@:1:2}" \
    sh -c "cd \"\$0\" 2>/dev/null || cd /; exec wine \"\$@\"" "$folder" "${@:3}"
' wine "$wine_root" "$project" "$PWD" "${settings[@]}" "$@"
