#!/usr/bin/env bash
# The real tuner as a native Wayland client: on a headless Weston without a
# seat (no keyboard, pointer or touch, but a text-input protocol: the case
# that crashed Qt's input context at start), and on a Weston with a seat
# (nested on a virtual X screen, where Qt's input method path is live). Each
# time a private PulseAudio server plays a 196 Hz sawtooth into the
# microphone and the readout must name G 3 through the accessibility bus.
# The seatless window is also captured and compared with the same window on
# X11: the same layout, with room for small differences in rendering.
# Exits 77 (skipped) where the machine cannot run the pieces.
set -u
veltra=$1
. "$(dirname "$0")/session.sh"
need weston weston-screenshooter pulseaudio pactl paplay sox Xvfb import compare
qt_plugins=$(/usr/lib/qt6/bin/qtpaths6 --query QT_INSTALL_PLUGINS 2>/dev/null)
[ -e "$qt_plugins/platforms/libqwayland-generic.so" ] || skip "Qt's Wayland plugin (qt6-wayland) is not installed"
need_screen "$@"

# The window's own size (Main.qml), so that every screen shows it whole.
width=420 height=860

start_sound_server
/usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
pids+=($!)
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
note g3 196 30
play g3

# Waits up to five seconds for a file to appear.
await() { for _ in $(seq 50); do [ -e "$1" ] && return 0; sleep 0.1; done; return 1; }

# Runs the app until its readout names G 3, then leaves it running (its id
# in app_pid); the remaining arguments are its environment.
run_app() {
    local name=$1; shift
    # Without the green in-tune wash: it fills the graph or not with each
    # reading, which would compare the moments of capture, not the layouts.
    mkdir -p "$work/config-$name/veltra"
    printf '[General]\nGreenOverlay=false\n' >"$work/config-$name/veltra/veltra.ini"
    env XDG_CONFIG_HOME="$work/config-$name" XDG_CACHE_HOME="$work/cache" "$@" "$veltra" >"$work/$name.log" 2>&1 &
    app_pid=$!
    pids+=($app_pid)
    if ! /usr/bin/python3 "$e2e/readout.py" "G 3," 10 >"$work/$name.readout"; then
        echo "FAIL: on $name the tuner did not show G 3 ($(cat "$work/$name.readout")); its output:"
        cat "$work/$name.log"
        kill -0 $app_pid 2>/dev/null || echo "(it is no longer running)"
        exit 1
    fi
    echo "ok: on $name the tuner heard G3"
}
stop_app() { kill "$app_pid"; wait "$app_pid" 2>/dev/null; }

# 1. X11, the reference picture.
start_xvfb "${width}x${height}x24" || skip "the virtual screen did not start"
x11=$x_display
run_app x11 DISPLAY="$x11" QT_QPA_PLATFORM=xcb
import -display "$x11" -window root "$work/x11.png"
stop_app

# 2. A headless Weston: no seat, a text-input protocol. Its shell shows no
# panel, and the output is the window's size, so the window fills it and
# the capture is the window. Qt draws no title bar of its own, as on a
# phone's shell, so the capture compares with the bare X11 window.
printf '[shell]\npanel-position=none\n' >"$work/weston.ini"
weston --backend=headless-backend.so --use-pixman --debug --config="$work/weston.ini" \
    --socket=wl-seatless --width=$width --height=$height >"$work/weston-seatless.log" 2>&1 &
pids+=($!)
await "$XDG_RUNTIME_DIR/wl-seatless" || skip "the headless Weston did not start"
export QT_WAYLAND_DISABLE_WINDOWDECORATION=1
run_app seatless WAYLAND_DISPLAY=wl-seatless QT_QPA_PLATFORM=wayland
(cd "$work" && WAYLAND_DISPLAY=wl-seatless weston-screenshooter >/dev/null 2>&1)
shot=$(ls "$work"/wayland-screenshot-*.png 2>/dev/null | head -n1)
[ -n "$shot" ] || { echo "FAIL: no screenshot of the Wayland output"; exit 1; }
mv "$shot" "$work/wayland.png"
stop_app

# The same layout: both pictures at a tenth of their size (which keeps the
# panels, buttons and text lines but not the glyphs' or the trace's detail)
# differ by little (0.005 when this was written: the trace and the figures
# differ between the runs). The same window moved down by one row of
# controls (44 pixels) differs by 0.15.
for shot in x11 wayland; do
    convert "$work/$shot.png" -alpha off -resize "$((width / 10))x$((height / 10))!" "$work/$shot-small.png"
done
difference=$(compare -metric RMSE "$work/x11-small.png" "$work/wayland-small.png" null: 2>&1 | sed 's/.*(\(.*\))/\1/')
if ! awk -v d="$difference" 'BEGIN { exit !(d < 0.05) }'; then
    echo "FAIL: the Wayland window differs from the X11 one by $difference (RMSE at a tenth of the size)"
    [ -n "${VELTRA_E2E_KEEP:-}" ] && cp "$work"/*.png "$VELTRA_E2E_KEEP"/
    exit 1
fi
echo "ok: the Wayland window looks like the X11 one (RMSE $difference at a tenth of the size)"
[ -n "${VELTRA_E2E_KEEP:-}" ] && cp "$work"/x11.png "$work"/wayland.png "$VELTRA_E2E_KEEP"/

# 3. A Weston with a seat (keyboard and pointer from the X screen it is
# nested in), where Qt's input context talks to the text-input protocol.
start_xvfb 800x900x24 || skip "the second virtual screen did not start"
seated_x=$x_display
DISPLAY=$seated_x weston --backend=x11-backend.so --use-pixman --config="$work/weston.ini" --socket=wl-seated \
    --width=$width --height=$height >"$work/weston-seated.log" 2>&1 &
pids+=($!)
await "$XDG_RUNTIME_DIR/wl-seated" || skip "the nested Weston did not start"
run_app seated WAYLAND_DISPLAY=wl-seated QT_QPA_PLATFORM=wayland
stop_app
exit 0
