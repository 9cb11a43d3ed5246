#!/usr/bin/env bash
# Runs the window chrome on a headless Weston: the system-move test on the "wayland" platform,
# then the application itself, which must start and render its window (a screenshot).
# Usage: wayland_chrome.sh <tst_systemmove executable> <linkdeck executable>
set -u
test_exe=$1
app=$2
work=$(mktemp -d)
chmod 700 "$work"
weston_pid=
cleanup() {
    [ -n "$weston_pid" ] && kill "$weston_pid" 2>/dev/null && wait "$weston_pid" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT

export XDG_RUNTIME_DIR=$work
socket=linkdeck-chrome
weston --backend=headless-backend.so --socket="$socket" --idle-time=0 >"$work/weston.log" 2>&1 &
weston_pid=$!
for _ in $(seq 100); do
    [ -S "$work/$socket" ] && break
    sleep 0.1
done
[ -S "$work/$socket" ] || { echo "FAIL: weston did not start"; cat "$work/weston.log"; exit 1; }
export WAYLAND_DISPLAY=$socket QT_QPA_PLATFORM=wayland
unset DISPLAY

"$test_exe" || { echo "FAIL: system-move test on wayland"; exit 1; }

LINKDECK_SETTINGS="$work/settings.ini" XDG_CONFIG_HOME="$work/xdg" \
    "$app" --no-splash --cbs "Wayland check" --quit-after 2500 \
    --screenshot "$work/screen.png" >"$work/app.out" 2>"$work/app.log"
status=$?
if [ $status -ne 0 ] || [ ! -s "$work/screen.png" ]; then
    echo "FAIL: the application did not start and render on wayland (exit $status)"
    tail -30 "$work/app.log"
    exit 1
fi
echo "PASS"
