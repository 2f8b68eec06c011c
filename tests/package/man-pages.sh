#!/usr/bin/env bash
# The manual pages format without a warning, as lintian checks them, and the
# tool's page lists every command.
# usage: man-pages.sh VELTRA_CLI PAGE...
set -euo pipefail
. "$(dirname "$0")/common.sh"
cli=$1
shift
command -v man >/dev/null || { echo "man is not installed"; exit 77; }

for page in "$@"; do
  warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
  [[ -z $warnings ]] || fail "$page: $warnings"
done
text=$(LC_ALL=C.UTF-8 MANWIDTH=200 man -l "$@" 2>/dev/null)
for command in $("$cli" --help | sed -n '/^commands:/,/^$/s/^  \([a-z]\+\).*/\1/p'); do
  grep -q "^   $command" <<<"$text" || fail "no section for the command $command"
done
