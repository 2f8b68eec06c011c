#!/usr/bin/env bash
# `cmake --install` into a scratch prefix puts every file in its place, and
# the installed veltra-cli works from there, reading the sound model that was
# installed beside it rather than the build tree's.
# usage: installed-tree.sh BUILD_DIR APP_ID
set -euo pipefail
. "$(dirname "$0")/common.sh"
build=$1 id=$2

prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null

while read -r file; do
  [[ -f $prefix/$file ]] || fail "not installed: $file"
done < <(expected_files "$id")
check_cli "$prefix/bin/veltra-cli" "$prefix"

# The model read is the installed one: spoil it and the tool must say so.
model=$prefix/share/veltra/sounds.bin
echo 'not a sound model' >"$model"
if error=$("$prefix/bin/veltra-cli" classify "$prefix/a4.wav" 2>&1); then
  fail "classify ran on a spoilt model"
fi
grep -qF "$model" <<<"$error" || fail "classify did not read $model: $error"
echo "installed tree: every file in place, the installed sound model read"
