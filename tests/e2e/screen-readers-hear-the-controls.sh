#!/usr/bin/env bash
# The real window read and worked through the desktop's accessibility bus,
# as a screen reader does (controls.py), in English and in German: every
# settings switch, every sound row and the reference-A wheel tell their
# role, name and state, and follow what is done through the bus. A sound
# server is there, as on a desktop, so that the corner button is the
# settings button; nothing is played.
set -u
veltra=$1
. "$(dirname "$0")/session.sh"
need_sound_server
need_screen "$@"
start_sound_server
start_screen

status=0
for language in en de; do
    config="$work/$language/config"
    mkdir -p "$config/veltra"
    printf '%s\n' '[General]' A4=442 ToneGenerator=false GreenOverlay=true SharpsOnly=false \
        ContinuousDisplay=true PianoView=false ClockEnabled=true UseML=true \
        Sounds_Guitar=false Sounds_Violin=true Sounds_Piano=false Sounds_Voice=true >"$config/veltra/veltra.ini"
    LANGUAGE=$language LANG=C.UTF-8 XDG_CONFIG_HOME="$config" XDG_CACHE_HOME="$work/$language/cache" \
        "$veltra" >"$work/veltra-$language.log" 2>&1 &
    pid=$!
    pids+=($pid)
    echo "-- $language"
    /usr/bin/python3 "$e2e/controls.py" "$language" "$top/translations" || status=1
    grep -qx "SharpsOnly=true" "$config/veltra/veltra.ini" || { echo "FAILED: the toggled switch was not stored"; status=1; }
    grep -qx "A4=443" "$config/veltra/veltra.ini" || { echo "FAILED: the wheel's new value was not stored"; status=1; }
    kill "$pid"
    wait "$pid" 2>/dev/null
done
[ $status -eq 0 ] || { echo "the window's output:"; cat "$work"/veltra-*.log; }
exit $status
