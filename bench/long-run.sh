#!/usr/bin/env bash
# The long-run check: an hour of tones, noise and silence (with a NaN every
# ten seconds) through veltra-cli's file commands, next to one minute of the
# same audio in the same run. `analyze --use-ml` takes the whole reading road
# (file reader, patch, note vote, graph redraws, labels) and the classifier
# in step with it; `classify` the classifier alone; `report` the per-note
# summary (--json), and with the page's pitch chart. Memory must stay flat:
# the hour's peak resident memory at most FLAT_RATIO times the minute's.
#
#   bench/long-run.sh                    # the build in ./build, 60 minutes
#   MINUTES=10 bench/long-run.sh         # a shorter long run
#   BASELINE_CLI=/path/to/veltra-cli bench/long-run.sh   # also time another build's `analyze`
#
# Exits 1 when memory grows with the length of the audio.
set -euo pipefail

BUILD=${BUILD:-build}
CLI=${CLI:-$BUILD/bin/veltra-cli}
MINUTES=${MINUTES:-60}
# Peak memory may differ by allocator noise between runs, not by the length.
FLAT_RATIO=1.25

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$BUILD/bench/long_run_audio" "$work/minute.wav" 1
"$BUILD/bench/long_run_audio" "$work/long.wav" "$MINUTES"

# Prints peak resident KiB, wall seconds and CPU seconds of one command.
measure() {
    /usr/bin/time -f '%M %e %U %S' -o "$work/time" "$@" >/dev/null
    awk '{ print $1, $2, $3 + $4 }' "$work/time"
}

status=0
printf '%-22s %12s %12s %7s %14s %14s %10s\n' command "peak 1 min" "peak $MINUTES min" ratio \
    "CPU s/min (1)" "CPU s/min ($MINUTES)" "wall ($MINUTES)"
row() {
    local label=$1 cli=$2
    shift 2
    read -r shortKib _ shortCpu < <(measure "$cli" "$@" "$work/minute.wav")
    read -r longKib longWall longCpu < <(measure "$cli" "$@" "$work/long.wav")
    awk -v l="$label" -v sk="$shortKib" -v lk="$longKib" -v sc="$shortCpu" -v lc="$longCpu" -v lw="$longWall" \
        -v m="$MINUTES" 'BEGIN { printf "%-22s %8.1f MiB %8.1f MiB %6.2fx %14.3f %14.3f %8.1f s\n",
                               l, sk / 1024, lk / 1024, lk / sk, sc, lc / m, lw }'
    if [[ $label != baseline* ]] && awk -v sk="$shortKib" -v lk="$longKib" -v r="$FLAT_RATIO" \
        'BEGIN { exit !(lk > sk * r) }'; then
        echo "  $label: memory grows with the length of the audio" >&2
        status=1
    fi
}

row "analyze" "$CLI" analyze
row "analyze --use-ml" "$CLI" analyze --use-ml
row "classify" "$CLI" classify
row "report --json" "$CLI" report --json
row "report -o page" "$CLI" report -o /dev/null
if [ -n "${BASELINE_CLI:-}" ]; then
    row "baseline: analyze" "$BASELINE_CLI" analyze
fi
exit $status
