#!/usr/bin/env bash
# The window chrome on a headless Weston: the title bar's system-move case on the "wayland"
# platform, then the application, which must start and render (a screenshot).
# Usage: wayland_chrome.sh <tst_titlebar executable> <linkdeck executable>
set -u
work=$(mktemp -d)
chmod 700 "$work"
weston_pid=
trap '[ -n "$weston_pid" ] && kill "$weston_pid" && wait "$weston_pid"; rm -rf "$work"' EXIT
export XDG_RUNTIME_DIR=$work WAYLAND_DISPLAY=linkdeck-chrome QT_QPA_PLATFORM=wayland
unset DISPLAY
weston --backend=headless-backend.so --socket=$WAYLAND_DISPLAY --idle-time=0 >/dev/null 2>&1 &
weston_pid=$!
for _ in $(seq 100); do [ -S "$work/$WAYLAND_DISPLAY" ] && break; sleep 0.1; done
[ -S "$work/$WAYLAND_DISPLAY" ] || { echo "FAIL: weston did not start"; exit 1; }
"$1" dragAsksCompositorOnWaylandOnly || { echo "FAIL: system move on wayland"; exit 1; }
LINKDECK_SETTINGS="$work/settings.ini" XDG_CONFIG_HOME="$work/xdg" "$2" --no-splash \
    --cbs "Wayland check" --quit-after 2500 --screenshot "$work/screen.png" >/dev/null 2>&1 &&
    [ -s "$work/screen.png" ] || { echo "FAIL: no start and render on wayland"; exit 1; }
echo PASS
