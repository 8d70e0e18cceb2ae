# What the scripts for 32-bit Windows share. Sourced, not run.
# shellcheck shell=bash disable=SC2034

cross=i686-w64-mingw32
wine_root="${XDG_CACHE_HOME:-$HOME/.cache}/zelvan/wine-i386"

as_root=()
if ((EUID != 0)) && sudo -n true 2>/dev/null; then as_root=(sudo -n --); fi

# Wine may run 64-bit programs alone; its 32-bit half shows in its list of folders.
machine_has_wine() {
  local folder
  command -v wine >/dev/null || return 1
  for folder in /usr/lib/i386-linux-gnu/wine /usr/lib/wine /usr/lib32/wine /opt/wine*/lib/wine; do
    [[ -d "$folder/i386-windows" ]] && return 0
  done
  return 1
}
