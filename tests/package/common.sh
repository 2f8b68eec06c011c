# Shared by the package tests: what an installation holds, and a run of the
# installed command-line tool.

fail() {
  echo "$(basename "$0"): $*" >&2
  exit 1
}

# expected_files APP_ID: every file an installation must hold, relative to
# its prefix.
expected_files() {
  local id=$1
  printf '%s\n' \
    bin/veltra bin/veltra-cli \
    share/veltra/sounds.bin \
    "share/applications/$id.desktop" \
    "share/metainfo/$id.metainfo.xml" \
    "share/icons/hicolor/scalable/apps/$id.svg" \
    "share/icons/hicolor/16x16/apps/$id.png" \
    "share/icons/hicolor/48x48/apps/$id.png" \
    "share/icons/hicolor/512x512/apps/$id.png" \
    share/man/man1/veltra.1.gz share/man/man1/veltra-cli.1.gz \
    share/bash-completion/completions/veltra-cli \
    share/doc/veltra/copyright share/doc/veltra/changelog.gz
}

# check_cli CLI SCRATCH: the tool runs, renders an A and reads it back as A4,
# and finds its sound model to classify the same file.
check_cli() {
  local cli=$1 scratch=$2
  "$cli" --version | grep -q '^veltra-cli [0-9]' || fail "$cli --version"
  "$cli" tone A -o "$scratch/a4.wav" --seconds 1 || fail "$cli tone"
  local analysis
  analysis=$("$cli" analyze "$scratch/a4.wav") || fail "$cli analyze"
  grep -q ' A4 ' <<<"$analysis" || fail "an A was not read as A4: $analysis"
  "$cli" classify "$scratch/a4.wav" --top 1 | grep -q . || fail "$cli classify printed nothing"
}
