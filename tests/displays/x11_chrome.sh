#!/usr/bin/env bash
# The application's own window chrome on a real X server (Xvfb 1024x768) driven by xdotool:
# a title-bar drag moves the window by the drag distance, a drag to 1 px from the screen's edge
# is refused (and logged), a double-click maximizes to the available area and another restores,
# minimize parks the window in the first mini-mode slot. Geometry comes from xwininfo, the
# minimize button's place from the application's log. Usage: x11_chrome.sh <linkdeck>
set -u
work=$(mktemp -d)
xvfb_pid= app_pid=
cleanup() {
    [ -n "$app_pid" ] && kill "$app_pid" 2>/dev/null && wait "$app_pid" 2>/dev/null
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null && wait "$xvfb_pid" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "FAIL: $*"; tail -30 "$work/app.log"; exit 1; }

Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
xvfb_pid=$!
for _ in $(seq 50); do [ -s "$work/display" ] && break; sleep 0.1; done
display=$(cat "$work/display")
[ -n "$display" ] || fail "no Xvfb display could be started"
export DISPLAY=":$display"
QT_QPA_PLATFORM=xcb LINKDECK_SETTINGS="$work/settings.ini" XDG_CONFIG_HOME="$work/xdg" \
    QT_LOGGING_RULES="*.debug=true;qt.*.debug=false" "$1" --no-splash >/dev/null 2>"$work/app.log" &
app_pid=$!
window=$(xdotool search --sync --onlyvisible --name '^LinkDeck$' | head -1)
for _ in $(seq 50); do grep -q "title buttons" "$work/app.log" && break; sleep 0.1; done

geometry() {
    xwininfo -id "$window" | awk '/upper-left X/{x=$NF} /upper-left Y/{y=$NF}
        /^ *Width/{w=$NF} /^ *Height/{h=$NF} END{print x, y, w, h}'
}
expect() {
    sleep 0.4
    [ "$(geometry)" = "$2" ] || fail "$1: geometry '$(geometry)', expected '$2'"
    echo "ok: $1"
}
drag() { # from x y, through the given points, released at the last
    xdotool mousemove "$1" "$2" mousedown 1
    shift 2
    while [ $# -gt 0 ]; do sleep 0.1; xdotool mousemove "$1" "$2"; shift 2; done
    sleep 0.1
    xdotool mouseup 1
}

read -r x y w h < <(geometry)
gx=$((x + w / 2)) gy=$((y + 10)) # a point of the title bar away from icon and buttons
drag $gx $gy $((gx + 30)) $((gy + 20)) $((gx + 60)) $((gy + 40))
expect "drag by (60, 40)" "$((x + 60)) $((y + 40)) $w $h"
x=$((x + 60)) y=$((y + 40)) gx=$((gx + 60)) gy=$((gy + 40))
drag $gx $gy 1 $gy
expect "drag to the screen's edge refused" "$x $y $w $h"
grep -q "mouseMoveEvent : Move out of available area!!" "$work/app.log" || fail "not logged"
xdotool mousemove $gx $gy click --repeat 2 --delay 80 1
expect "double-click maximizes" "0 0 1024 768"
xdotool mousemove 512 10 click --repeat 2 --delay 80 1
expect "double-click restores" "$x $y $w $h"
read -r mx my < <(sed -n 's/.*title buttons minimize=\([0-9]*\),\([0-9]*\) .*/\1 \2/p' "$work/app.log")
xdotool mousemove $((x + mx)) $((y + my)) click 1
# Row 0 runs from 30 px above the available area's bottom edge (767) to 1 px above it.
expect "minimize lands in the first slot" "0 $((767 - 30)) 160 30"
echo PASS
