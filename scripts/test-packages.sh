#!/usr/bin/env bash
# Builds the Debian packages, asks lintian about them, and installs, uses and purges them in a
# layer over this system, which keeps nothing of it. What is missing is installed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Within the layer: what the packages give, and that purging leaves nothing.
if [[ "${1:-}" == --within ]]; then
  layer="$2"
  mount -t tmpfs none "$layer"
  mkdir "$layer"/{upper,work,root}
  mount -t overlay overlay -o "lowerdir=/,upperdir=$layer/upper,workdir=$layer/work" "$layer/root"
  mount -t proc proc "$layer/root/proc"
  mount --bind /dev "$layer/root/dev"
  mkdir "$layer/root/packages"
  cp build/package/*.deb "$layer/root/packages"
  exec chroot "$layer/root" bash -euc '
    files() { find /usr /etc /var ! -path "/var/log/*" | sort; }
    files >/packages/before
    dpkg -i /packages/*.deb >/dev/null
    /usr/bin/python3 -O -c "
import importlib.metadata, zelvan
assert importlib.metadata.version(\"zelvan\") == zelvan.__version__
assert zelvan.Region([[(0, 0), (1, 0), (0, 1)]]).area == 0.5"
    zelvan --version
    ldconfig -p | grep -q libzelvan.so.1
    dpkg --purge python3-zelvan zelvan-tools libzelvan-dev libzelvan1 >/dev/null
    files | diff /packages/before -
    ! ldconfig -p | grep zelvan'
fi

scripts/install-deps.sh lintian
rm -f build/package/*.deb
cmake --workflow --preset package >/dev/null
echo "== lintian"
# The maintainer has no address yet.
complaints="$(lintian --allow-root build/package/*.deb | grep -v " bogus-mail-host" || true)"
[[ -z "$complaints" ]] || { echo "$complaints"; exit 1; }
echo "== installed and purged"
if ((EUID)); then
  echo "skipped: only root can"
  exit 0
fi
layer="$(mktemp -d)"
unshare -m "$0" --within "$layer"
rmdir "$layer"
