#!/bin/sh
# A virtual microphone for tests and measurements on machines without a
# sound card: a private sound server whose default source is the monitor of
# a null sink, so whatever is played into the sink is "heard". The server is
# the classic PulseAudio daemon, or PipeWire with its PulseAudio layer
# (pipewire-pulse) and session manager (WirePlumber), as most desktops and
# phones run it; programs reach either through the same PulseAudio socket.
#
#   eval "$(tools/virtual-microphone.sh start)"   # exports the variables below
#   paplay tone.wav &                             # the microphone hears it
#   tools/virtual-microphone.sh crash             # kills the server, as a crash would
#   eval "$(tools/virtual-microphone.sh serve)"   # starts it again in the same directory
#   tools/virtual-microphone.sh stop              # ends the server, removes its directory
#   eval "$(tools/virtual-microphone.sh prepare)" # the directory alone: serve starts the server later
#
# VELTRA_SOUND_SERVER=pipewire (at start or prepare) picks PipeWire; the
# default is pulseaudio. The choice is kept in the directory.
#
# start and prepare print shell assignments for XDG_RUNTIME_DIR (the
# server's private directory, so parallel runs never share a server),
# PULSE_SERVER and, once running, VELTRA_VMIC_PID. The other commands read
# XDG_RUNTIME_DIR; serve prints the new VELTRA_VMIC_PID. stop only removes
# directories that start or prepare created (they hold a marker file).
#
# PipeWire by hand, as found on Debian 12's 0.3.65 (no systemd user session
# here, and these tests run as root):
# - The three daemons start as root without being told anything: only the
#   packaged systemd user units refuse root (ConditionUser=!root).
# - They want a session bus (WirePlumber reserves devices and looks for
#   portals over it); each server gets a private dbus-daemon, whose socket
#   lives in the same directory.
# - HOME is the directory too: WirePlumber remembers default devices under
#   HOME/.local/state and would otherwise carry them between runs.
# - With no sound card PipeWire makes a dummy "auto_null" sink. The
#   microphone is a null sink made through the PulseAudio layer
#   (pactl load-module module-null-sink: a support.null-audio-sink node owned
#   by pipewire-pulse, so it goes when that process does and serve makes it
#   again); its monitor is the default source. Unlike the classic daemon's
#   null sink, it renders in step with the clock: a monitor hears a note at
#   once, not up to two seconds late.
# - WirePlumber makes a remembered default device the default again when it
#   reappears; serve sets the defaults anyway.
# - pactl suspend-source virt.monitor 1, then 0, leaves recording streams
#   that existed before without data (new streams hear fine): the stall the
#   tuner's watchdog exists for.
set -eu

# The rate the sink runs at; programs that ask for it get it without resampling.
RATE=48000
MARKER=veltra-virtual-microphone

die() { echo "virtual-microphone: $*" >&2; exit 1; }

need() {
    for tool in "$@"; do
        command -v "$tool" >/dev/null || die "$tool is not installed (tools/install-deps.sh)"
    done
}

prepare() {
    server=${VELTRA_SOUND_SERVER:-pulseaudio}
    case "$server" in
    pulseaudio) need pulseaudio pactl ;;
    pipewire) need pipewire pipewire-pulse wireplumber pw-cli dbus-daemon pactl ;;
    *) die "VELTRA_SOUND_SERVER is pulseaudio or pipewire, not '$server'" ;;
    esac
    dir=$(mktemp -d "${TMPDIR:-/tmp}/vmic.XXXXXX")
    chmod 700 "$dir"
    : >"$dir/$MARKER"
    echo "$server" >"$dir/server"
    echo "export XDG_RUNTIME_DIR='$dir'"
    echo "export PULSE_SERVER='unix:$dir/pulse/native'"
}

start() {
    assignments=$(prepare)
    eval "$assignments"
    serve "$XDG_RUNTIME_DIR" || { rm -rf "$XDG_RUNTIME_DIR"; exit 1; }
    echo "$assignments"
}

# wait_for COMMAND...: until it succeeds, five seconds at most.
wait_for() {
    tries=0
    until "$@" >/dev/null 2>&1; do
        tries=$((tries + 1))
        [ "$tries" -lt 100 ] || return 1
        sleep 0.05
    done
}

# Runs the server in $1 and prints its pid's assignment.
serve() {
    dir=$1
    [ -f "$dir/$MARKER" ] || die "$dir was not made by this script"
    export XDG_RUNTIME_DIR="$dir"
    # The servers keep cookies and state under HOME; keep them private too.
    export HOME="$dir"
    if [ "$(cat "$dir/server")" = pipewire ]; then
        serve_pipewire "$dir"
    else
        serve_pulseaudio "$dir"
    fi
    pactl set-default-sink virt
    pactl set-default-source virt.monitor
    echo "export VELTRA_VMIC_PID='$(cat "$dir/pulse/pid")'"
}

serve_pulseaudio() {
    pulseaudio -n --daemonize=yes --exit-idle-time=-1 --disallow-exit --use-pid-file=yes \
        --log-target=file:"$1/pulse.log" \
        -L "module-native-protocol-unix auth-anonymous=1" \
        -L "module-null-sink sink_name=virt rate=$RATE" -L module-always-sink \
        >/dev/null 2>&1 || die "pulseaudio did not start (see $1/pulse.log)"
    # The server answers once its socket is up.
    wait_for pactl info || { end_server "$1" TERM; die "pulseaudio did not answer"; }
}

# daemon NAME COMMAND...: started in the background, detached from the
# caller's terminal and session, its pid in $dir/NAME.pid.
daemon() {
    name=$1
    shift
    setsid "$@" >>"$dir/$name.log" 2>&1 </dev/null &
    echo $! >"$dir/$name.pid"
}

serve_pipewire() {
    dir=$1
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$dir/bus"
    if ! { [ -f "$dir/dbus.pid" ] && alive "$(cat "$dir/dbus.pid")"; }; then
        rm -f "$dir/bus"
        daemon dbus dbus-daemon --session --nofork --nopidfile --address="$DBUS_SESSION_BUS_ADDRESS"
        wait_for test -S "$dir/bus" || die "the session bus did not start (see $dir/dbus.log)"
    fi
    # A killed server leaves its socket behind, and WirePlumber gives up at
    # once (exit 69) on a socket that nobody answers: remove the old one and
    # wait until the new server answers, not merely until the file exists.
    rm -f "$dir/pipewire-0"
    daemon pipewire pipewire
    wait_for pw-cli info 0 || { end_server "$dir" TERM; die "pipewire did not start (see $dir/pipewire.log)"; }
    daemon wireplumber wireplumber
    daemon pipewire-pulse pipewire-pulse
    wait_for pactl info || { end_server "$dir" TERM; die "pipewire-pulse did not answer (see $dir/pipewire-pulse.log)"; }
    pactl load-module module-null-sink sink_name=virt rate=$RATE >/dev/null
    # WirePlumber takes the new node in a moment later.
    wait_for pactl set-default-source virt.monitor || { end_server "$dir" TERM; die "the null sink did not appear"; }
    # Where a PulseAudio daemon keeps its pid, for VELTRA_VMIC_PID.
    cp "$dir/pipewire-pulse.pid" "$dir/pulse/pid"
}

# Whether process $1 runs. A process that ended but was not yet reaped
# (where pid 1 reaps slowly or never, as in some containers) counts as gone.
alive() {
    state=$(ps -o stat= -p "$1" 2>/dev/null) || return 1
    case "$state" in Z*) return 1 ;; esac
}

# end PIDFILE SIGNAL: signals that process; waits until it is gone.
end() {
    [ -f "$1" ] || return 0
    pid=$(cat "$1")
    kill -"$2" "$pid" 2>/dev/null || true
    tries=0
    while alive "$pid" && [ "$tries" -lt 30 ]; do
        tries=$((tries + 1))
        sleep 0.1
    done
    rm -f "$1"
}

# Ends the server in $1 with signal $2 and waits until it is gone. The
# session bus stays until stop: a desktop's outlives its sound server too.
end_server() {
    [ -f "$1/$MARKER" ] || die "$1 was not made by this script"
    if [ "$(cat "$1/server")" = pipewire ]; then
        for name in pipewire-pulse wireplumber pipewire; do end "$1/$name.pid" "$2"; done
        rm -f "$1/pulse/pid"
    else
        end "$1/pulse/pid" "$2"
    fi
}

stop_dir() {
    end_server "$1" TERM
    end "$1/dbus.pid" TERM
    rm -rf "$1"
}

case "${1:-}" in
start) start ;;
prepare) prepare ;;
serve) serve "${XDG_RUNTIME_DIR:?XDG_RUNTIME_DIR is not set: run serve in the shell that ran start}" ;;
crash) end_server "${XDG_RUNTIME_DIR:?XDG_RUNTIME_DIR is not set: run crash in the shell that ran start}" KILL ;;
stop) stop_dir "${XDG_RUNTIME_DIR:?XDG_RUNTIME_DIR is not set: run stop in the shell that ran start}" ;;
*) die "usage: $0 start | prepare | serve | crash | stop" ;;
esac
