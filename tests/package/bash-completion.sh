#!/usr/bin/env bash
# The bash completion offers the tool's commands, each command's options,
# sound names inside a comma-separated list, files where files go, and
# nothing for a number.
# usage: bash-completion.sh COMPLETION_SCRIPT
set -uo pipefail
. "$(dirname "$0")/common.sh"
. "$1"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
touch "$scratch/take1.wav" "$scratch/take2.flac" "$scratch/werckmeister.scl"
cd "$scratch"

# complete WORDS...: what pressing Tab after the words offers, sorted on one line.
complete_words() {
  COMP_WORDS=(veltra-cli "$@")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMPREPLY=()
  _veltra_cli
  printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd' '
}

failures=0
while IFS='|' read -r words expected; do
  read -ra argv <<<"$words"
  # A trailing space in the words means an empty word under the cursor.
  [[ $words == *' ' ]] && argv+=("")
  got=$(complete_words "${argv[@]}")
  if [[ $got != "$expected" ]]; then
    echo "veltra-cli $words<Tab>: offered '$got', expected '$expected'" >&2
    failures=$((failures + 1))
  fi
done <<'CASES'
an|analyze
--v|--version
analyze --j|--json
analyze --sounds |guitar piano violin voice
analyze --sounds guitar,v|guitar,violin guitar,voice
classify --gate p|piano
analyze take|take1.wav take2.flac
analyze --a4 |
tone --octave |
tone -o take1|take1.wav
tone --s|--scala --seconds
analyze --scala w|werckmeister.scl
listen --transpose |
tone --te|--temperament
devices --|--help
nosuchcommand |
CASES
((failures == 0)) || fail "$failures completions were wrong"
