#!/bin/sh
# A virtual microphone for tests and measurements on machines without a
# sound card: a private PulseAudio server whose default source is the
# monitor of a null sink, so whatever is played into the sink is "heard".
#
#   eval "$(tools/virtual-microphone.sh start)"   # exports the variables below
#   paplay tone.wav &                             # the microphone hears it
#   tools/virtual-microphone.sh stop              # ends the server, removes its directory
#
# start prints shell assignments for XDG_RUNTIME_DIR (the server's private
# directory, so parallel runs never share a server), PULSE_SERVER and
# VELTRA_VMIC_PID. stop reads XDG_RUNTIME_DIR; it only removes directories
# that start created (they hold a marker file).
set -eu

# The rate the sink runs at; programs that ask for it get it without resampling.
RATE=48000
MARKER=veltra-virtual-microphone

die() { echo "virtual-microphone: $*" >&2; exit 1; }

start() {
    command -v pulseaudio >/dev/null || die "pulseaudio is not installed (tools/install-deps.sh)"
    command -v pactl >/dev/null || die "pactl is not installed (tools/install-deps.sh)"
    dir=$(mktemp -d "${TMPDIR:-/tmp}/vmic.XXXXXX")
    : >"$dir/$MARKER"
    export XDG_RUNTIME_DIR="$dir"
    # The server keeps its cookie and state under HOME; keep them private too.
    export HOME="$dir"
    pulseaudio -n --daemonize=yes --exit-idle-time=-1 --disallow-exit --use-pid-file=yes \
        --log-target=file:"$dir/pulse.log" \
        -L "module-native-protocol-unix auth-anonymous=1" \
        -L "module-null-sink sink_name=virt rate=$RATE" -L module-always-sink \
        >/dev/null 2>&1 || { rm -rf "$dir"; die "pulseaudio did not start (see its log above)"; }
    # The server answers once its socket is up.
    tries=0
    until pactl info >/dev/null 2>&1; do
        tries=$((tries + 1))
        [ "$tries" -lt 50 ] || { stop_dir "$dir"; die "pulseaudio did not answer"; }
        sleep 0.1
    done
    pactl set-default-sink virt
    pactl set-default-source virt.monitor
    pid=$(cat "$dir/pulse/pid")
    echo "export XDG_RUNTIME_DIR='$dir'"
    echo "export PULSE_SERVER='unix:$dir/pulse/native'"
    echo "export VELTRA_VMIC_PID='$pid'"
}

stop_dir() {
    dir=$1
    [ -f "$dir/$MARKER" ] || die "$dir was not made by this script"
    if [ -f "$dir/pulse/pid" ]; then
        pid=$(cat "$dir/pulse/pid")
        kill "$pid" 2>/dev/null || true
        # Give the server a moment to leave before its directory goes.
        tries=0
        while kill -0 "$pid" 2>/dev/null && [ "$tries" -lt 30 ]; do
            tries=$((tries + 1))
            sleep 0.1
        done
    fi
    rm -rf "$dir"
}

case "${1:-}" in
start) start ;;
stop) stop_dir "${XDG_RUNTIME_DIR:?XDG_RUNTIME_DIR is not set: run stop in the shell that ran start}" ;;
*) die "usage: $0 start | stop" ;;
esac
