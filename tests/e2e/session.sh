# Sourced by the end-to-end tests: a scratch directory cleaned up on exit, a
# private sound server (tools/virtual-microphone.sh: PulseAudio, or PipeWire
# with VELTRA_SOUND_SERVER=pipewire), a virtual screen with an accessibility
# bus, and notes to play. Anything the machine lacks skips the test (exit 77)
# with one line saying why.
e2e=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
top=$(cd "$e2e/../.." && pwd)
vmic=$top/tools/virtual-microphone.sh
skip() { echo "skipped: $*"; exit 77; }

need() {
    for tool in "$@"; do
        command -v "$tool" >/dev/null || skip "$tool is not installed (tools/install-deps.sh)"
    done
}

# The window's tests read it through the accessibility bus, on a session bus
# of their own: call before anything is started, with the script's arguments.
need_screen() {
    need Xvfb dbus-run-session /usr/libexec/at-spi-bus-launcher
    /usr/bin/python3 -c 'import pyatspi' 2>/dev/null || skip "python3-pyatspi is not installed"
    if [ -z "${VELTRA_E2E_INNER:-}" ]; then
        rm -rf "$work"
        VELTRA_E2E_INNER=1 exec dbus-run-session -- "$0" "$@"
    fi
}

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
    # Gone before the next test starts: a virtual screen still shutting down
    # when the next one takes its display number removes the newcomer's
    # socket with its own.
    for _ in $(seq 20); do
        alive=0
        for pid in "${pids[@]}"; do kill -0 "$pid" 2>/dev/null && alive=1; done
        [ $alive = 0 ] && break
        sleep 0.1
    done
    for pid in "${pids[@]}"; do kill -9 "$pid" 2>/dev/null; done
    [ -n "${vmic_made:-}" ] && "$vmic" stop
    rm -rf "$work"
}
trap cleanup EXIT

# The tools the chosen sound server needs, else the test is skipped.
need_sound_server() {
    need pactl paplay sox
    case "${VELTRA_SOUND_SERVER:-pulseaudio}" in
    pipewire) need pipewire pipewire-pulse wireplumber dbus-daemon ;;
    *) need pulseaudio ;;
    esac
}

start_sound_server() {
    local mic
    mic=$("$vmic" start) || skip "the sound server did not start"
    eval "$mic"
    vmic_made=1
}

# Only the server's private directory and address, as before a login's
# sound server is up: serve_sound_server starts it.
prepare_sound_server() {
    local mic
    mic=$("$vmic" prepare) || skip "the sound server's directory was not made"
    eval "$mic"
    vmic_made=1
}

# Kills the server as a crash would, then starts it again.
crash_sound_server() { "$vmic" crash; }
serve_sound_server() { eval "$("$vmic" serve)"; }

# A virtual screen of our own (its display number told by the server once it
# listens) and the accessibility bus on it.
start_screen() {
    start_xvfb 1024x900x24 || skip "the virtual screen did not start"
    export DISPLAY=$x_display
    /usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
    pids+=($!)
    export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
}

# start_xvfb SIZE: a virtual X screen of the given size, its display name in
# $x_display once it takes connections (the server tells its number then).
# Run in this shell, not in a command substitution, so that the cleanup
# knows the server and ends it. The number is drawn from a wide range, not
# the lowest free one: tests run side by side, and a server still shutting
# down removes the socket of a newcomer that took its number at once, which
# left the window unable to connect. A number in use ends the server at
# once, and another is drawn.
start_xvfb() {
    local attempt ready pid
    for attempt in $(seq 20); do
        ready="$work/display-$1-$attempt"
        Xvfb ":$((1000 + RANDOM % 30000))" -displayfd 3 -screen 0 "$1" -nolisten tcp 3>"$ready" >/dev/null 2>&1 &
        pid=$!
        pids+=($pid)
        for _ in $(seq 50); do
            [ -s "$ready" ] && { x_display=":$(head -n1 "$ready")"; return 0; }
            kill -0 "$pid" 2>/dev/null || break
            sleep 0.1
        done
        kill "$pid" 2>/dev/null
    done
    return 1
}

# note NAME HZ SECONDS: a sawtooth (every harmonic, like a string) in $work/NAME.wav.
note() { sox -n -r 48000 -c 1 "$work/$1.wav" synth "$3" sawtooth "$2" vol 0.25; }

# play NAME [SINK]: plays $work/NAME.wav into the default sink or SINK, in the background.
play() {
    paplay --latency-msec=20 ${2:+-d "$2"} "$work/$1.wav" &
    pids+=($!)
}

now() { date +%s.%N; }
# Seconds since $1 (a now), to the hundredth.
since() { awk -v from="$1" -v to="$(now)" 'BEGIN { printf "%.2f", to - from }'; }

# The terminal tuner's readout, written to the file $listen_out: one line a
# reading in fixed columns, "  A3    +1.5%    220.2 Hz  [...]", or "  -  "
# with no note (on a terminal each would begin with a carriage return and a
# clear-line code).
listen_mark() { listen_at=$(stat -c %s "$listen_out"); }
listen_recent() { tail -c +$((listen_at + 1)) "$listen_out" | tr '\r' '\n' | sed 's/\x1b\[K//g'; }
# listen_shows "A 3," SECONDS: the note is written after the mark, in time.
listen_shows() {
    local want=${1//[ ,]/} end
    end=$(awk -v s="$2" -v t="$(now)" 'BEGIN { printf "%.2f", t + s }')
    until listen_recent | grep -q "^  $want  "; do
        awk -v end="$end" -v t="$(now)" 'BEGIN { exit !(t < end) }' || return 1
        sleep 0.05
    done
}

# window_shows "A 3," SECONDS: the window's readout names the note in time.
window_shows() { /usr/bin/python3 "$e2e/readout.py" "$1" "$2" >/dev/null; }
