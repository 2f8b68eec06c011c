#!/usr/bin/env bash
# The newest release the metainfo and the Debian changelog name is the
# version being built.
# usage: release-version.sh VERSION METAINFO CHANGELOG
set -euo pipefail
. "$(dirname "$0")/common.sh"
version=$1 metainfo=$2 changelog=$3

newest=$(grep -o '<release version="[^"]*"' "$metainfo" | head -n1 | cut -d'"' -f2)
[[ $newest == "$version" ]] || fail "the metainfo's newest release is '$newest', not $version"
newest=$(head -n1 "$changelog" | sed -n 's/^veltra (\([^)]*\)).*/\1/p')
[[ $newest == "$version" ]] || fail "the changelog's newest entry is '$newest', not $version"
