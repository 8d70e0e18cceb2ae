#!/usr/bin/env bash
# Makes this machine ready to build for 32-bit Windows and to run what was built:
# the cross compiler, and Wine. With everything there it says nothing.
#
# Wine is taken from the machine where it runs 32-bit programs. Elsewhere a small
# i386 Debian with Wine inside is made in the user's cache folder and entered by
# chroot: the machine's own wine32 cannot be installed where the versions of its
# amd64 and i386 packages differ. scripts/wine.sh runs programs in either.
#
# Exit status: 0 ready, 3 not possible here (the reason is on standard error).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source ./windows-env.sh

cannot() {
  echo "$*" >&2
  exit 3
}

root_or_cannot() {
  ((${#as_root[@]})) || ((EUID == 0)) || cannot "$1: that takes root, and there is no sudo without a password."
  command -v apt-get >/dev/null || cannot "$1: there is no apt-get here."
}

install() {
  local missing=()
  for package in "$@"; do
    [[ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" == installed ]] ||
      missing+=("$package")
  done
  ((${#missing[@]})) || return 0
  root_or_cannot "${missing[*]} must be installed"
  echo "Installing what is missing: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# The address and the release that the machine's own packages come from.
debian_source() {
  # shellcheck disable=SC2016
  apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT) $(ORIGIN)' 'Created-By: Packages' |
    awk '$3 == "main" && $4 == "Debian" && $2 !~ /-/ { print $1, $2; exit }'
}

make_i386_system() {
  root_or_cannot "A small i386 system with Wine must be made"
  install debootstrap
  local address release new="$wine_root.new"
  read -r address release < <(debian_source) || true
  [[ -n "${release:-}" ]] || cannot "apt names no Debian mirror to take Wine from."
  echo "Making a small i386 system with Wine, once: $wine_root"
  mkdir -p "$(dirname "$wine_root")"
  "${as_root[@]}" rm -rf --one-file-system "$new"
  if ! "${as_root[@]}" debootstrap --arch=i386 --variant=minbase --include=wine,wine32 \
    "$release" "$new" "$address" >"$wine_root.log" 2>&1; then
    tail -n 5 "$wine_root.log" >&2
    cannot "debootstrap failed; all of its words are in $wine_root.log"
  fi
  "${as_root[@]}" mv "$new" "$wine_root"
}

if ! command -v "$cross-g++-posix" >/dev/null; then install g++-mingw-w64-i686-posix; fi
[[ -d /usr/src/googletest ]] || install googletest
if ! machine_has_wine && [[ ! -d "$wine_root" ]]; then make_i386_system; fi
if ! machine_has_wine; then
  root_or_cannot "The i386 system must be entered"
  "${as_root[@]}" unshare --mount true 2>/dev/null || cannot "The kernel gives no mount namespace to enter the i386 system with."
fi
