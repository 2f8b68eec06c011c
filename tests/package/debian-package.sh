#!/usr/bin/env bash
# The Debian package: built as `make deb` builds it, it holds every file of an
# installation under /usr, declares its section and dependencies, passes
# lintian where lintian is installed, and, where the test runs as root and the
# package is not installed already, installs, works from PATH and is removed
# again.
# usage: debian-package.sh BUILD_DIR APP_ID
set -euo pipefail
. "$(dirname "$0")/common.sh"
build=$1 id=$2

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$out" >"$out/cpack.log" || {
  cat "$out/cpack.log" >&2
  fail "cpack failed"
}
deb=$(echo "$out"/veltra_*.deb)
[[ -f $deb ]] || fail "no package in $out"

contents=$(dpkg-deb --contents "$deb" | awk '{ print $6 }')
while read -r file; do
  grep -qx "./usr/$file" <<<"$contents" || fail "not in the package: /usr/$file"
done < <(expected_files "$id")

[[ $(dpkg-deb --field "$deb" Section) == sound ]] || fail "section is not sound"
depends=$(dpkg-deb --field "$deb" Depends)
# dpkg-shlibdeps found the libraries, and the run-time Qt Quick modules are named.
for package in libc6 libsndfile1 qml6-module-qtquick qml6-module-qtquick-dialogs qml6-module-qt-labs-folderlistmodel; do
  grep -q "\b$package\b" <<<"$depends" || fail "Depends lacks $package: $depends"
done

if command -v lintian >/dev/null; then
  lintian --fail-on error "$deb" || fail "lintian reports errors"
else
  echo "lintian is not installed: not run"
fi

if [[ $(id -u) -ne 0 ]]; then
  echo "not root: the package was not installed"
elif dpkg-query -W -f='${Status}' veltra 2>/dev/null | grep -q 'ok installed'; then
  echo "veltra is installed already: left alone"
else
  export DEBIAN_FRONTEND=noninteractive
  apt() { apt-get -o DPkg::Lock::Timeout=900 -q -y "$@" >"$out/apt.log" 2>&1 || { cat "$out/apt.log" >&2; return 1; }; }
  apt install --no-install-recommends "$deb" || fail "the package does not install"
  trap 'apt purge veltra; rm -rf "$out"' EXIT
  [[ $(command -v veltra-cli) == /usr/bin/veltra-cli ]] || fail "veltra-cli is not on PATH"
  check_cli veltra-cli "$out"
  echo "installed, ran veltra-cli from PATH, removed"
fi
