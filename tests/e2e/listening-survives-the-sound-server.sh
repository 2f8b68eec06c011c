#!/usr/bin/env bash
# The tuner keeps listening through the sound server's changes, checked on
# a private server: PulseAudio, or PipeWire with its PulseAudio layer and
# WirePlumber (VELTRA_SOUND_SERVER=pipewire, tools/virtual-microphone.sh).
#
#   1. started before the server, it says it is paused and listens once the
#      server is up;
#   2. the server killed in the middle of a note and started again;
#   3. the default input switched to another device;
#   4. that device removed in the middle of a note;
#   5. the input suspended and resumed (pactl suspend-sink on the sink whose
#      monitor is the input; the classic daemon refuses suspend-source on a
#      monitor), after which PipeWire 0.3.65 feeds the streams that were
#      open only silence.
#
# After each, the next note played must be read within two seconds; while
# there is no input, the paused line must be shown and no note. Run on the
# terminal tuner (cli: veltra-cli listen, its readings piped to a file, then
# checked as one line each; and listen --json) or on the window (window:
# veltra, read through the accessibility bus). Every wait is bounded by
# what it checks; no sleep is longer than the recovery target.
#
#   listening-survives-the-sound-server.sh cli|window PROGRAM
set -u
mode=$1
program=$2
. "$(dirname "$0")/session.sh"
need_sound_server
[ "$mode" = window ] && need_screen "$@"
server=${VELTRA_SOUND_SERVER:-pulseaudio}

# How soon after a change the program must listen again and read the next
# note.
RECOVERY=2
# What a just-created null sink of the classic daemon adds: it renders up to
# two seconds ahead until a client asking for short latency has been served
# a first block, so its monitor hears a note up to that much late. Measured
# with parec alone on this rig: 0.9 to 3.6 s on a busy 2-core machine. A
# sound card's input has no such delay, nor has PipeWire's null sink; a note
# through an older sink is held to RECOVERY.
NEW_SINK=2
[ "$server" = pipewire ] && NEW_SINK=0

prepare_sound_server
[ "$mode" = window ] && start_screen
export XDG_CONFIG_HOME="$work/config" XDG_CACHE_HOME="$work/cache"
for tone in "g3 196" "a3 220" "c4 261.63" "e3 164.81" "d4 293.66" "b3 246.94"; do
    note $tone 6
done

fail() {
    echo "FAILED ($server): $*; the program's output:"
    cat "$work/out"
    [ -f "$work/err" ] && cat "$work/err"
    exit 1
}

# until_within SECONDS COMMAND...: until the command succeeds, at most that long.
until_within() {
    local end
    end=$(awk -v s="$1" -v t="$(now)" 'BEGIN { printf "%.2f", t + s }')
    shift
    until "$@"; do
        awk -v end="$end" -v t="$(now)" 'BEGIN { exit !(t < end) }' || return 1
        sleep 0.05
    done
}

if [ "$mode" = cli ]; then
    listen_out=$work/out
    : >"$work/err"
    "$program" listen >"$listen_out" 2>"$work/err" &
    pids+=($!)
    mark() { listen_mark; marked_err=$(stat -c %s "$work/err"); }
    shows() { listen_shows "$@"; }
    # paused SECONDS: the line on standard error, and no note on the readout.
    paused_now() {
        tail -c +$((marked_err + 1)) "$work/err" | grep -q "^veltra-cli: listening paused: no sound input$" &&
            [ "$(listen_recent | grep -v '^$' | tail -n1 | cut -c1-5)" = "  -  " ]
    }
    paused() { until_within "$1" paused_now; }
else
    "$program" >"$work/out" 2>&1 &
    pids+=($!)
    mark() { :; }
    shows() { window_shows "$@"; }
    paused() { /usr/bin/python3 "$e2e/readout.py" --paused "Listening paused: no sound input" "$1" >/dev/null; }
fi

# play_note NAME [SINK]: ends the note before, plays this one.
played=
play_note() {
    [ -n "$played" ] && kill "$played" 2>/dev/null
    play "$@"
    played=$!
}

# recovered WHAT NOTE T0 [MORE [T1]]: the note was read within RECOVERY
# (+ MORE) seconds of T0; T1, when the server answered again, is reported.
recovered() {
    local most=$((RECOVERY + ${4:-0})) took
    shows "$2" "$most" || fail "$1: $2 was not read within $most s"
    took=$(since "$3")
    awk -v took="$took" -v most="$most" 'BEGIN { exit !(took <= most) }' || fail "$1: $2 was read after $took s"
    echo "ok: $1: $2 read $took s after it${5:+, $(since "$5") s after the server answered} ($server)"
}

# 1. Started before the server: paused, then listening once it is up. The
# marks stay at the outputs' start: marked now, they could already be past
# the paused line, which a quick start writes before this shell gets here.
listen_at=0 marked_err=0
paused 5 || fail "no pause shown while no server runs"
echo "ok: started before the server, the pause is shown"
mark
t0=$(now)
serve_sound_server
t1=$(now)
play_note g3
recovered "the server's first start" "G 3," "$t0" "$NEW_SINK" "$t1"
if [ "$mode" = window ]; then
    # Started with no input, the corner button offered the way to the
    # microphone; listening now, it is the settings button again.
    /usr/bin/python3 "$e2e/readout.py" --button Settings "$RECOVERY" >/dev/null ||
        fail "the corner button still says the microphone is missing"
    echo "ok: the corner button is the settings button again"
fi

# 2. The server dies in the middle of the note, and comes back.
mark
crash_sound_server
paused "$RECOVERY" || fail "no pause shown, or a stale note, after the server died"
echo "ok: the server's loss is shown, with no note"
mark
t0=$(now)
serve_sound_server
t1=$(now)
play_note a3
recovered "the server's return" "A 3," "$t0" "$NEW_SINK" "$t1"

# 3. Another input becomes the default: it is followed.
mark
other=$(pactl load-module module-null-sink sink_name=other rate=48000)
play_note c4 other
t0=$(now)
until_within "$RECOVERY" pactl set-default-source other.monitor || fail "the new input did not appear"
recovered "a new default input" "C 4," "$t0" "$NEW_SINK"

# 4. That device is removed in the middle of its note (which ends with it,
# not to be moved to the remaining sink): the server's next default is heard.
mark
play_note e3
t0=$(now)
pactl unload-module "$other"
recovered "the default input removed" "E 3," "$t0"

# 5. The input is suspended in the middle of a note: paused (the classic
# daemon delivers nothing meanwhile, PipeWire silence), then resumed and the
# next note read.
mark
play_note d4
shows "D 4," "$RECOVERY" || fail "D4 was not read before the suspend"
mark
pactl suspend-sink virt 1
paused "$RECOVERY" || fail "no pause shown, or a stale note, while the input was suspended"
echo "ok: the suspended input is shown paused, with no note"
mark
pactl suspend-sink virt 0
t0=$(now)
play_note b3
recovered "the input's resumption" "B 3," "$t0"

[ "$mode" = cli ] || exit 0

# Piped, the readout is one line a reading and nothing else; everything
# else went to standard error.
if grep -qv '^  [-A-G]' "$listen_out" || grep -q $'\r' "$listen_out"; then
    fail "standard output holds more than one line a reading"
fi
grep -q "^veltra-cli: listening again$" "$work/err" || fail "no 'listening again' line on standard error"
echo "ok: standard output holds only readings, one a line"

# --json: one object a line, each parsing, with the note's fields.
"$program" listen --json >"$work/json" 2>/dev/null &
json_pid=$!
pids+=($json_pid)
until_within "$RECOVERY" grep -q '"note":"B"' "$work/json" || fail "listen --json did not read B3"
kill -INT "$json_pid"
until_within "$RECOVERY" eval '! kill -0 "$json_pid" 2>/dev/null' || fail "listen --json did not end on Ctrl-C"
/usr/bin/python3 - "$work/json" <<'PY' || fail "listen --json wrote a line that is no reading"
import json, sys
notes = 0
for line in open(sys.argv[1]):
    reading = json.loads(line)
    assert isinstance(reading["time"], float)
    if reading["note"] is not None:
        assert reading["note"] == "B" and reading["octave"] == 3, reading
        assert abs(reading["cents"]) < 50 and abs(reading["frequency"] - 246.94) < 3, reading
        notes += 1
assert notes > 0
PY
echo "ok: listen --json writes one parsing object a line"
