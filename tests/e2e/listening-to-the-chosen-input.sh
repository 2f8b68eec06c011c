#!/usr/bin/env bash
# The tuner listens to the input chosen for it, not to the default, on a
# private sound server with two null sinks whose monitors are the inputs:
# PulseAudio, or PipeWire with its PulseAudio layer and WirePlumber
# (VELTRA_SOUND_SERVER=pipewire, tools/virtual-microphone.sh).
#
#   1. a note into the chosen input is read, one into the default is not;
#   2. the chosen input removed: one line says the default stands in, and a
#      note into the default is read;
#   3. the chosen input back: one line says so, and it is heard again while
#      the default is not.
#
# Run on the terminal tuner (veltra-cli listen --input NAME) and on the
# window (veltra with InputSource=NAME in its preference file, read through
# the accessibility bus); both take the choice through the same start and
# reconnect path.
#
#   listening-to-the-chosen-input.sh cli|window PROGRAM
set -u
mode=$1
program=$2
. "$(dirname "$0")/session.sh"
need_sound_server
[ "$mode" = window ] && need_screen "$@"
server=${VELTRA_SOUND_SERVER:-pulseaudio}

# As in listening-survives-the-sound-server.sh: the next note within two
# seconds, plus what a just-created null sink of the classic daemon renders
# ahead.
RECOVERY=2
NEW_SINK=2
[ "$server" = pipewire ] && NEW_SINK=0
# How long a note into the input not listened to must go unread.
UNHEARD=2

start_sound_server
[ "$mode" = window ] && start_screen
export XDG_CONFIG_HOME="$work/config" XDG_CACHE_HOME="$work/cache"
for tone in "g3 196" "a3 220" "c4 261.63" "e3 164.81" "d4 293.66"; do
    note $tone 5
done
chosen=chosen
module=$(pactl load-module module-null-sink sink_name=$chosen rate=48000) || skip "no second null sink"

# Each input hears a quiet room all along, as a microphone does: a null sink
# of the classic daemon that nothing plays into captures nothing, and an
# input that delivers nothing for a second counts as lost, which is not
# what this test is about.
sox -n -r 48000 -c 1 "$work/room.wav" synth 60 whitenoise vol 0.001
play room virt
play room "$chosen"

fail() {
    echo "FAILED ($server, $mode): $*; the program's output:"
    cat "$work/out"
    [ -f "$work/err" ] && cat "$work/err"
    exit 1
}

if [ "$mode" = cli ]; then
    listen_out=$work/out
    log=$work/err
    "$program" listen --input "$chosen.monitor" >"$listen_out" 2>"$log" &
    pids+=($!)
    mark() { listen_mark; }
    shows() { listen_shows "$@"; }
else
    log=$work/out
    mkdir -p "$XDG_CONFIG_HOME/veltra"
    printf '[General]\nInputSource=%s.monitor\n' "$chosen" >"$XDG_CONFIG_HOME/veltra/veltra.ini"
    "$program" >"$log" 2>&1 &
    pids+=($!)
    mark() { :; }
    shows() { window_shows "$@"; }
fi

# said LINE SECONDS: the program's console has the line, in time.
said() {
    local end
    end=$(awk -v s="$2" -v t="$(now)" 'BEGIN { printf "%.2f", t + s }')
    until grep -qF -- "$1" "$log"; do
        awk -v end="$end" -v t="$(now)" 'BEGIN { exit !(t < end) }' || return 1
        sleep 0.05
    done
}

played=
play_note() {
    [ -n "$played" ] && kill "$played" 2>/dev/null
    play "$@"
    played=$!
}

# 1. The chosen input is heard; the default is not.
mark
play_note g3 "$chosen"
t0=$(now)
shows "G 3," $((RECOVERY + NEW_SINK + 2)) || fail "G3 into the chosen input was not read"
echo "ok: the chosen input is heard ($(since "$t0") s)"
mark
play_note c4 virt
shows "C 4," "$UNHEARD" && fail "C4 into the default input was read"
echo "ok: the default input is not heard while the chosen one is there"

# 2. The chosen input goes in the middle of a note while another sounds
# into the default: the default stands in at once, said in one line, with no
# pause (a virtual input that falls silent would count as lost, and be
# reopened on the default as well; this one never does).
note e3long 164.81 8
mark
play_note g3 "$chosen"
shows "G 3," "$RECOVERY" || fail "G3 into the chosen input was not read"
play e3long virt
lines=$(wc -l <"$log")
pactl unload-module "$module"
t0=$(now)
fallback="input $chosen.monitor is not there: listening to the system default"
said "$fallback" "$RECOVERY" || fail "no line said that the default stands in"
shows "E 3," "$RECOVERY" || fail "E3 into the default was not read after the chosen input went"
echo "ok: the chosen input removed, the default is heard ($(since "$t0") s)"
tail -n +$((lines + 1)) "$log" | grep -E "audio device lost|listening paused" &&
    fail "the input's removal paused listening"
echo "ok: the fallback was said in one line, with no pause"

# 3. The chosen input returns: listened to again, said once.
mark
module=$(pactl load-module module-null-sink sink_name=$chosen rate=48000)
play room "$chosen"
said "input $chosen.monitor is back" "$RECOVERY" || fail "no line said that the chosen input is back"
play_note d4 "$chosen"
t0=$(now)
shows "D 4," $((RECOVERY + NEW_SINK)) || fail "D4 into the returned input was not read"
echo "ok: the chosen input back, it is heard again ($(since "$t0") s)"
mark
play_note a3 virt
shows "A 3," "$UNHEARD" && fail "A3 into the default was read after the chosen input came back"
echo "ok: the default is not heard once the chosen input is back"

[ "$(grep -cF -- "$fallback" "$log")" = 1 ] || fail "the fallback was not said exactly once"
[ "$(grep -cF -- "is back" "$log")" = 1 ] || fail "the return was not said exactly once"
exit 0
