#!/usr/bin/env bash
# Fetches Pure Data's Debian source package and builds libpd (with expr and
# sigmund~) as a static library under the given directory, with our patches
# (tools/libpd/patches/*.patch, applied in name order after unpacking, as
# Debian applies its own). With STOCK_DIR, the same source is also built
# there without our patches, for the tests that compare the two.
#
#   tools/libpd/build-libpd.sh OUT_DIR [STOCK_DIR]
#
# CC and RANLIB, when set, name the compiler and archive indexer (for a
# cross build).
#
# Each result (DIR/lib/libpd.a, DIR/include/*.h) is cached: when DIR/stamp
# names the pinned version and the patches it was built with, nothing is
# fetched or rebuilt. The system's apt configuration is left untouched: the
# deb-src list and the package lists live in OUT_DIR/apt, derived from the
# system's own sources.
set -euo pipefail

PD_SOURCE_PACKAGE=puredata
PD_SOURCE_VERSION=0.53.1+ds-2+deb12u1
PD_UPSTREAM_VERSION=0.53.1

here=$(cd "$(dirname "$0")" && pwd)
out=$(realpath -m "${1:?usage: build-libpd.sh OUT_DIR [STOCK_DIR]}")
stock=${2:+$(realpath -m "$2")}
patches=("$here"/patches/*.patch)

# What a directory's stamp must say for its library to be reused.
patched_stamp="$PD_SOURCE_VERSION patches $(cat "${patches[@]}" | sha256sum | cut -c1-16)"
stock_stamp="$PD_SOURCE_VERSION stock"
current() { [[ -f "$1/stamp" && "$(cat "$1/stamp")" == "$2" && -f "$1/lib/libpd.a" ]]; }
wanted=()
current "$out" "$patched_stamp" || wanted+=("$out")
[[ -z "$stock" ]] || current "$stock" "$stock_stamp" || wanted+=("$stock")
[[ ${#wanted[@]} -gt 0 ]] || exit 0

apt_dir="$out/apt"
fetch_dir="$out/fetched"
rm -rf "$apt_dir" "$fetch_dir"
mkdir -p "$apt_dir/lists/partial" "$apt_dir/parts" "$fetch_dir"

# A private deb-src list mirroring the system's binary sources.
list="$apt_dir/sources.list"
: > "$list"
for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
  [[ -f "$f" ]] || continue
  sed -n 's/^[[:space:]]*deb[[:space:]]\+/deb-src /p' "$f" >> "$list"
done
for f in /etc/apt/sources.list.d/*.sources; do
  [[ -f "$f" ]] || continue
  sed 's/^Types:.*/Types: deb-src/' "$f" > "$apt_dir/parts/$(basename "$f")"
done

apt_opts=(-o "Dir::Etc::SourceList=$list" -o "Dir::Etc::SourceParts=$apt_dir/parts"
          -o "Dir::State::Lists=$apt_dir/lists" -o "APT::Sandbox::User=root" -q)
echo "libpd: fetching $PD_SOURCE_PACKAGE $PD_SOURCE_VERSION source"
apt-get "${apt_opts[@]}" update >"$apt_dir/update.log" 2>&1 || {
  echo "libpd: apt-get update of the private source list failed (see $apt_dir/update.log)" >&2; exit 1; }
(cd "$fetch_dir" && apt-get "${apt_opts[@]}" source --download-only \
    "$PD_SOURCE_PACKAGE=$PD_SOURCE_VERSION" >"$apt_dir/source.log" 2>&1) || {
  echo "libpd: could not fetch $PD_SOURCE_PACKAGE=$PD_SOURCE_VERSION (see $apt_dir/source.log)" >&2; exit 1; }
dsc=$(ls "$fetch_dir"/${PD_SOURCE_PACKAGE}_*.dsc)

# build DIR STAMP [PATCH...]: unpacks the source into DIR/src, applies the
# patches, builds, and leaves DIR/lib, DIR/include and DIR/stamp.
build() {
  local dir=$1 stamp=$2 patch lib pd=$1/src/pd
  shift 2
  rm -rf "$dir/src" "$dir/lib" "$dir/include" "$dir/stamp"
  mkdir -p "$dir/src" "$dir/lib" "$dir/include"
  # apt verified the files against the signed index; unpack without a second
  # signature check (the keyring of the maintainer is not needed for that).
  dpkg-source --no-check -x "$dsc" "$pd" >"$dir/unpack.log"
  grep -q "PD_BUGFIX_VERSION 1" "$pd/src/m_pd.h" && grep -q "PD_MINOR_VERSION 53" "$pd/src/m_pd.h" || {
    echo "libpd: unpacked source is not Pure Data $PD_UPSTREAM_VERSION" >&2; exit 1; }
  [[ -f "$pd/src/z_libpd.c" && -f "$pd/libpd/Makefile" ]] || {
    echo "libpd: the source package lacks libpd's core" >&2; exit 1; }
  for patch in "$@"; do
    patch -d "$pd" -p1 --forward --quiet <"$patch" >>"$dir/unpack.log" 2>&1 || {
      echo "libpd: $(basename "$patch") does not apply (see $dir/unpack.log)" >&2; exit 1; }
  done

  echo "libpd: building in $dir"
  make -C "$pd/libpd" -j"$(nproc)" ADDITIONAL_CFLAGS="-fPIC" >"$dir/build.log" 2>&1 || {
    echo "libpd: build failed (see $dir/build.log)" >&2; exit 1; }
  lib=$(find "$pd" -name libpd.a | head -n1)
  [[ -n "$lib" ]] || { echo "libpd: build produced no libpd.a" >&2; exit 1; }
  cp "$lib" "$dir/lib/"
  # libpd's makefile archives with the host's ar; a cross build (CC and RANLIB
  # naming the target's tools) indexes the archive with the target's ranlib.
  "${RANLIB:-ranlib}" "$dir/lib/libpd.a"
  cp "$pd"/src/z_libpd.h "$pd"/src/z_queued.h "$pd"/src/z_print_util.h "$pd"/src/m_pd.h "$dir/include/"
  echo "$stamp" > "$dir/stamp"
  echo "libpd: ready in $dir"
}

for dir in "${wanted[@]}"; do
  if [[ "$dir" == "$out" ]]; then
    build "$out" "$patched_stamp" "${patches[@]}"
  else
    build "$stock" "$stock_stamp"
  fi
done
